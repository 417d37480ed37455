#pragma once
// What the screen benchmarks share: a database filled by one SQL text, the
// session of an operator on it with the main window shown, the median of
// several runs and the peak memory of the process.
#include "arranque.h"
#include "login.h"
#include "mdiform1.h"
#include "module1.h"

#include <QApplication>
#include <QElapsedTimer>
#include <sqlite3.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

// Runs the text straight on the file; a failure is printed, the figures go on.
inline void ejecutarEnArchivo(const QString& archivo, const QByteArray& sql)
{
    sqlite3* bd = nullptr;
    sqlite3_open(archivo.toUtf8().constData(), &bd);
    char* error = nullptr;
    if (sqlite3_exec(bd, sql.constData(), nullptr, nullptr, &error) != SQLITE_OK)
        std::fprintf(stderr, "%s\n", error);
    sqlite3_free(error);
    sqlite3_close(bd);
}

// An operator's session on the file, past the access code, every screen registered.
struct SesionDeMedicion {
    explicit SesionDeMedicion(const QString& archivo) : m(despliegue(archivo)), principal(abierto(m, archivo))
    {
        Registra_Pantallas(principal);
        principal.resize(1600, 900);
        principal.show();
    }
    template <class T> T* mostrar(const char* nombre)
    {
        auto* p = static_cast<T*>(principal.Mostrar(QString::fromLatin1(nombre)));
        QCoreApplication::processEvents();
        return p;
    }
    Module1 m;
    MDIForm1 principal;

private:
    static Despliegue despliegue(const QString& archivo)
    {
        Despliegue d;
        d.archivo = archivo;
        return d;
    }
    static Module1& abierto(Module1& m, const QString& archivo)
    {
        m.Conexion.ConnectionString = QStringLiteral("Provider=embebido;Data Source=") + archivo;
        m.Conexion.Open();
        LOGIN::Carga_Parametros(m);
        return m;
    }
};

inline double picoDeMemoriaMB()
{
    rusage uso {};
    getrusage(RUSAGE_SELF, &uso);
    return uso.ru_maxrss / 1024.0;
}

inline double mediana(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

// The median in milliseconds of `veces` runs of f.
template <class F> double medianaDe(int veces, F&& f)
{
    std::vector<double> tiempos;
    for (int i = 0; i < veces; ++i) {
        QElapsedTimer t;
        t.start();
        f();
        tiempos.push_back(t.nsecsElapsed() / 1e6);
    }
    return mediana(tiempos);
}

// The figures for each number of transactions, with no display needed; the
// numbers given on the command line, if any, instead of the usual ones.
template <class F> int medirCon(int argc, char** argv, std::initializer_list<int> totales, F medir)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    std::vector<int> pedidos;
    for (int i = 1; i < argc; ++i)
        if (const int n = std::atoi(argv[i]); n > 0)
            pedidos.push_back(n);
    if (pedidos.empty())
        pedidos.assign(totales);
    for (int total : pedidos)
        medir(total);
    return 0;
}
