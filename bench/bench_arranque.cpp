// Start-up figures: the time from the process's start to LOGIN waiting for the
// access code, on a warm demo database, and the time of one load of the
// reference cache with 5,000 clients.
//
//   bench_arranque            runs the whole measurement and prints the figures
#include "arranque.h"
#include "embebido.h"
#include "login.h"
#include "mdiform1.h"
#include "module1.h"

#include <QElapsedTimer>
#include <sqlite3.h>
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <unistd.h>
#include <vector>

namespace {

// Milliseconds since this process was started by the system.
double msDesdeInicioDelProceso()
{
    QFile f(QStringLiteral("/proc/self/stat"));
    if (!f.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray linea = f.readAll();
    const QList<QByteArray> campos = linea.mid(linea.lastIndexOf(')') + 2).split(' ');
    const double inicio = campos.value(19).toDouble() / double(sysconf(_SC_CLK_TCK));
    timespec ahora {};
    clock_gettime(CLOCK_BOOTTIME, &ahora);
    return (double(ahora.tv_sec) + ahora.tv_nsec / 1e9 - inicio) * 1000.0;
}

// Child: the program's own start-up on the given file, until LOGIN waits.
int medirUnArranque(int argc, char** argv, const QString& archivo)
{
    Aplicacion app(argc, argv);
    Despliegue d;
    d.archivo = archivo;
    Module1 m(d);
    MDIForm1 principal(m);
    Registra_Pantallas(principal);
    principal.show();
    QTimer::singleShot(0, &principal, [&] {
        auto* login = static_cast<LOGIN*>(principal.Mostrar(QStringLiteral("LOGIN")));
        login->repaint();
        std::printf("%.1f\n", msDesdeInicioDelProceso());
        std::fflush(stdout);
        QCoreApplication::exit(login->Text1->hasFocus() || !login->isActiveWindow() ? 0 : 2);
    });
    return app.exec();
}

// Brings the clients of the file to the given number, with made-up names.
void completarClientes(const QString& archivo, int total)
{
    sqlite3* bd = nullptr;
    sqlite3_open(archivo.toUtf8().constData(), &bd);
    const QByteArray sql =
        QStringLiteral("DELETE FROM clientes WHERE C_CLIENTE > %1;"
                       "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                       "INSERT OR IGNORE INTO clientes (C_CLIENTE, D_cliente, Revisar) SELECT i, 'CLIENTE ' || i, '' FROM n;")
            .arg(total)
            .toUtf8();
    sqlite3_exec(bd, sql.constData(), nullptr, nullptr, nullptr);
    sqlite3_close(bd);
}

double mediana(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : v[v.size() / 2];
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3 && QByteArray(argv[1]) == "--medir")
        return medirUnArranque(argc, argv, QString::fromLocal8Bit(argv[2]));

    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const QString archivo = dir.filePath(QStringLiteral("ramil.db"));
    QElapsedTimer t;
    t.start();
    ServidorEmbebido::crearBase(archivo, true);
    std::printf("creación de la base de demostración: %lld ms\n", t.elapsed());

    // Start-up, warm: the file exists and the system has it in its caches.
    std::vector<double> tiempos;
    for (int i = 0; i < 12; ++i) {
        QProcess hijo;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        if (!env.contains(QStringLiteral("DISPLAY")))
            env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        hijo.setProcessEnvironment(env);
        hijo.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--medir"), archivo});
        hijo.waitForFinished(30000);
        const double ms = hijo.readAllStandardOutput().trimmed().toDouble();
        if (i >= 2) // the first runs warm the caches
            tiempos.push_back(ms);
    }
    std::printf("arranque hasta LOGIN esperando el código: mediana %.0f ms, mínimo %.0f ms, máximo %.0f ms (%zu arranques)\n",
                mediana(tiempos), *std::min_element(tiempos.begin(), tiempos.end()),
                *std::max_element(tiempos.begin(), tiempos.end()), tiempos.size());

    // The reference cache with 5,000 clients.
    completarClientes(archivo, 5000);
    Module1 m;
    m.Conexion.ConnectionString = QStringLiteral("Provider=embebido;Data Source=") + archivo;
    m.Conexion.Open();
    LOGIN::Carga_Parametros(m);
    std::vector<double> cargas;
    for (int i = 0; i < 20; ++i) {
        QElapsedTimer c;
        c.start();
        m.Carga_Tablas();
        cargas.push_back(c.nsecsElapsed() / 1e6);
    }
    std::printf("Carga_Tablas con %d clientes: mediana %.2f ms, mínimo %.2f ms\n", int(m.N_Clientes), mediana(cargas),
                *std::min_element(cargas.begin(), cargas.end()));
    return 0;
}
