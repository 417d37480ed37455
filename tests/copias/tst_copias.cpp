// The daily copies of the embedded database (the start of the program that
// takes them: tests/libros).
#include "base_temporal.h"
#include "copias.h"
#include "prueba.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <thread>
#include <vector>

using Copias::Resultado;
using Estado = Copias::Resultado::Estado;

namespace Copias {
char* toString(Resultado::Estado e) { return QTest::toString(int(e)); }
} // namespace Copias

namespace {

const QDate kDia(2026, 3, 14);

void escribirArchivo(const QString& ruta, const QByteArray& bytes)
{
    QFile f(ruta);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

// A database (prueba.db) with its copies' folder beside it.
struct Libro {
    BaseTemporal base;
    const QString carpeta = base.carpeta() + QStringLiteral("/copias");
    Resultado copia(int cuantas, const QDate& dia) const { return Copias::Copia_Diaria(base.archivo(), carpeta, cuantas, dia); }
    QString copiaDe(const QDate& dia) const { return carpeta + dia.toString(QStringLiteral("'/prueba-'yyyy-MM-dd'.db'")); }
    // The names of the copies the folder holds, oldest first.
    QStringList copias() const
    {
        QStringList r;
        for (const QString& ruta : Copias::Copias_En(base.archivo(), carpeta))
            r << QFileInfo(ruta).fileName();
        return r;
    }
};

} // namespace

class PruebaCopias : public QObject {
    Q_OBJECT
private slots:
    void unaCopiaPorDia()
    {
        Libro l;
        l.base.sql(QStringLiteral("INSERT INTO clientes (C_cliente, D_cliente) VALUES (7, 'ANA')"));
        const Resultado primera = Copias::Copia_Diaria(l.base.archivo(), QString(), 30, kDia); // beside the database
        QCOMPARE(primera.estado, Estado::Hecha);
        QCOMPARE(primera.archivo, l.copiaDe(kDia));
        QVERIFY(Copias::Base_Sana(primera.archivo));
        QCOMPARE(BaseTemporal::valorDe(primera.archivo, "SELECT D_cliente FROM clientes WHERE C_cliente = 7"),
                 QStringLiteral("ANA"));
        // one plain file, restorable on its own
        QCOMPARE(BaseTemporal::valorDe(primera.archivo, "PRAGMA journal_mode"), QStringLiteral("delete"));
        QCOMPARE(QDir(l.carpeta).entryList(QDir::Files), QStringList {QStringLiteral("prueba-2026-03-14.db")});

        // a later start the same day finds it and writes nothing
        l.base.sql(QStringLiteral("INSERT INTO clientes (C_cliente, D_cliente) VALUES (8, 'LUIS')"));
        const Resultado otra = l.copia(30, kDia);
        QCOMPARE(otra.estado, Estado::AlDia);
        QCOMPARE(otra.archivo, primera.archivo);
        QCOMPARE(BaseTemporal::valorDe(primera.archivo, "SELECT count(*) FROM clientes WHERE C_cliente = 8"),
                 QStringLiteral("0"));

        // the next day has its own, with the new rows
        const Resultado siguiente = l.copia(30, kDia.addDays(1));
        QCOMPARE(siguiente.estado, Estado::Hecha);
        QCOMPARE(BaseTemporal::valorDe(siguiente.archivo, "SELECT D_cliente FROM clientes WHERE C_cliente = 8"),
                 QStringLiteral("LUIS"));
        QCOMPARE(l.copias(), (QStringList {"prueba-2026-03-14.db", "prueba-2026-03-15.db"}));

        // a count of 0 switches the copies off
        QCOMPARE(l.copia(0, kDia.addDays(2)).estado, Estado::Apagada);
        QCOMPARE(l.copias().size(), 2);
    }

    void copiaConsistenteMientrasOtroEscribe()
    {
        BaseTemporal base;
        base.sql(QStringLiteral("CREATE TABLE escritura (n INTEGER PRIMARY KEY, relleno BLOB);"
                                "CREATE TABLE cuenta (total INTEGER); INSERT INTO cuenta VALUES (0);"));
        QProcess escritor;
        escritor.start(QStringLiteral(ESCRITOR), {base.archivo()});
        QVERIFY(escritor.waitForReadyRead(10000));
        QCOMPARE(escritor.readLine().trimmed(), QByteArray("listo"));
        // some megabytes, so that the copy takes long enough to cross many writes
        for (int i = 0; i < 200 && base.valor(QStringLiteral("SELECT total FROM cuenta")).toInt() < 3000; ++i)
            QTest::qWait(50);

        const Resultado r = Copias::Copia_Diaria(base.archivo(), QString(), 30, kDia);
        const int despues = base.valor(QStringLiteral("SELECT total FROM cuenta")).toInt();
        escritor.kill();
        escritor.waitForFinished();
        QVERIFY2(r.estado == Estado::Hecha, qPrintable(r.error));
        QVERIFY(Copias::Base_Sana(r.archivo));
        const int filas = BaseTemporal::valorDe(r.archivo, "SELECT count(*) FROM escritura").toInt();
        QVERIFY(filas >= 1);
        QCOMPARE(BaseTemporal::valorDe(r.archivo, "SELECT total FROM cuenta").toInt(), filas); // no half transaction
        QCOMPARE(BaseTemporal::valorDe(r.archivo, "SELECT max(n) FROM escritura").toInt(), filas);
        QVERIFY2(despues > filas, "the writer went on while the copy was taken");
    }

    void lasMasViejasSalenAlPasarLaCuenta()
    {
        Libro l;
        QDir().mkpath(l.carpeta);
        // what is not a copy of this database is neither counted nor removed
        const QStringList ajenos {"otra-2020-01-01.db", "prueba-2020-01-01.db.parcial", "prueba-viejo.db",
                                  "prueba-2020-01-01.txt"};
        for (const QString& n : ajenos)
            escribirArchivo(l.carpeta + QLatin1Char('/') + n, "x");
        // what a crash left a day ago goes; a copy being written by another process now stays
        const QString resto = l.carpeta + QStringLiteral("/prueba-2026-03-10.db.parcial-77-0000abcd");
        const QString enCurso = l.carpeta + QStringLiteral("/prueba-2026-03-14.db.parcial-78-0000abcd");
        escribirArchivo(resto, "x");
        escribirArchivo(enCurso, "x");
        QFile viejo(resto);
        QVERIFY(viejo.open(QIODevice::ReadWrite));
        QVERIFY(viejo.setFileTime(QDateTime::currentDateTime().addDays(-2), QFileDevice::FileModificationTime));
        viejo.close();

        for (int d = 0; d < 5; ++d)
            QCOMPARE(l.copia(3, kDia.addDays(d)).estado, Estado::Hecha);
        QCOMPARE(l.copias(), (QStringList {"prueba-2026-03-16.db", "prueba-2026-03-17.db", "prueba-2026-03-18.db"}));
        for (const QString& n : ajenos)
            QVERIFY2(QFile::exists(l.carpeta + QLatin1Char('/') + n), qPrintable(n));
        QVERIFY(!QFile::exists(resto));
        QVERIFY(QFile::exists(enCurso));

        // a smaller count takes effect at the next copy; days missed leave no hole to fill
        QCOMPARE(l.copia(1, kDia.addDays(9)).estado, Estado::Hecha);
        QCOMPARE(l.copias(), QStringList {"prueba-2026-03-23.db"});
    }

    void unaCopiaDanadaNoCuenta()
    {
        Libro l;
        QCOMPARE(l.copia(2, kDia.addDays(-1)).estado, Estado::Hecha);
        QCOMPARE(l.copia(2, kDia).estado, Estado::Hecha);
        const QString deHoy = l.copiaDe(kDia);
        // the day's copy cut short (a full disk, a crash in the middle), or bytes
        // that are no database at all under the day's name: made anew
        for (const auto& danar :
             std::initializer_list<std::function<void()>> {[&] { QFile(deHoy).resize(QFileInfo(deHoy).size() / 2); },
                                                           [&] { escribirArchivo(deHoy, QByteArray(8192, 'z')); }}) {
            danar();
            QVERIFY(!Copias::Base_Sana(deHoy, true));
            QCOMPARE(l.copia(2, kDia).estado, Estado::Hecha);
            QVERIFY(Copias::Base_Sana(deHoy));
        }
        // the previous day's copy was kept all along
        QCOMPARE(l.copias().size(), 2);

        // a damaged source gives no copy, and the good copies stay
        BaseTemporal danada;
        escribirArchivo(danada.archivo(), QByteArray("SQLite format 3") + QByteArray(8000, '\x7f'));
        QCOMPARE(Copias::Copia_Diaria(danada.archivo(), l.carpeta, 2, kDia.addDays(1)).estado, Estado::Fallida);
        QVERIFY(!QFile::exists(l.copiaDe(kDia.addDays(1))));
        QCOMPARE(QDir(l.carpeta).entryList({QStringLiteral("*.parcial*")}, QDir::Files), QStringList {});
        QCOMPARE(l.copias().size(), 2);
    }

    // Several operators of one machine start at the same moment.
    void variosArranquesALaVez()
    {
        Libro l;
        std::vector<Resultado> resultados(4);
        std::vector<std::thread> hilos;
        for (Resultado& r : resultados)
            hilos.emplace_back([&] { r = l.copia(30, kDia); });
        for (std::thread& h : hilos)
            h.join();
        for (const Resultado& r : resultados)
            QVERIFY2(r.estado == Estado::Hecha || r.estado == Estado::AlDia, qPrintable(r.error));
        QCOMPARE(QDir(l.carpeta).entryList(QDir::Files), QStringList {QStringLiteral("prueba-2026-03-14.db")});
        QVERIFY(Copias::Base_Sana(l.copiaDe(kDia)));
    }
};

REGISTRAR_PRUEBA(PruebaCopias);
#include "tst_copias.moc"
