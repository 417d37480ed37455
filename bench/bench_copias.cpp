// The daily copy of the embedded database at start-up: for a demo database
// grown to about 100,000 and 400,000 transactions, the time of the day's copy
// (online backup, integrity check, rotation) and the time a later start of the
// same day spends finding that copy sound.
//
//   bench_copias            builds the databases and prints the figures
#include "copias.h"
#include "embebido.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <sqlite3.h>

#include <cstdio>

namespace {

// The demo's transactions doubled under new sequences until there are at least 'total'.
int crecer(const QString& archivo, int total)
{
    sqlite3* bd = nullptr;
    sqlite3_open(archivo.toUtf8().constData(), &bd);
    int filas = 0;
    for (;;) {
        sqlite3_stmt* st = nullptr;
        sqlite3_prepare_v2(bd, "SELECT count(*) FROM MOVIMIENTOS", -1, &st, nullptr);
        sqlite3_step(st);
        filas = sqlite3_column_int(st, 0);
        sqlite3_finalize(st);
        if (filas >= total || filas == 0)
            break;
        sqlite3_exec(bd,
                     "BEGIN; CREATE TEMP TABLE t AS SELECT * FROM MOVIMIENTOS;"
                     "UPDATE t SET SECUENCIA = SECUENCIA + (SELECT max(SECUENCIA) FROM MOVIMIENTOS);"
                     "INSERT INTO MOVIMIENTOS SELECT * FROM t; DROP TABLE t; COMMIT;",
                     nullptr, nullptr, nullptr);
    }
    sqlite3_close(bd);
    return filas;
}

void medir(int total)
{
    QTemporaryDir dir;
    const QString archivo = dir.filePath(QStringLiteral("ramil.db"));
    ServidorEmbebido::crearBase(archivo, true);
    const int filas = crecer(archivo, total);
    const QDate hoy = QDate::currentDate();

    QElapsedTimer t;
    t.start();
    const Copias::Resultado r = Copias::Copia_Diaria(archivo, QString(), 30, hoy);
    const double copia = t.nsecsElapsed() / 1e6;
    t.restart();
    const Copias::Resultado otra = Copias::Copia_Diaria(archivo, QString(), 30, hoy);
    const double alDia = t.nsecsElapsed() / 1e6;
    if (r.estado != Copias::Resultado::Estado::Hecha || otra.estado != Copias::Resultado::Estado::AlDia)
        std::printf("FALLO: %s\n", qPrintable(r.error));
    std::printf("%7d transacciones, %6.1f MB: copia del día %8.1f ms; segundo inicio del día %7.1f ms\n", filas,
                QFileInfo(archivo).size() / 1048576.0, copia, alDia);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    medir(0);
    medir(100000);
    medir(400000);
    return 0;
}
