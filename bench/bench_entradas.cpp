// Several counters entering at once on one embedded database file: two and
// five entry screens, each in a process of its own, each entering the same
// number of transactions with typing pauses of 0 to 100 ms. Every entry must
// be stored, each under a key of its own; a screen whose sequence another
// counter took meanwhile has its entry stored under the next free one.
//
//   bench_entradas [entries per counter]   (40 unless told)
#include "embebido.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sqlite3.h>
#include <vector>

namespace {

long contar(const QString& archivo, const char* sql)
{
    sqlite3* bd = nullptr;
    sqlite3_open_v2(archivo.toUtf8().constData(), &bd, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* s = nullptr;
    long r = -1;
    if (sqlite3_prepare_v2(bd, sql, -1, &s, nullptr) == SQLITE_OK && sqlite3_step(s) == SQLITE_ROW)
        r = long(sqlite3_column_int64(s, 0));
    sqlite3_finalize(s);
    sqlite3_close(bd);
    return r;
}

void ronda(int mostradores, int entradas)
{
    QTemporaryDir dir;
    const QString archivo = dir.filePath(QStringLiteral("pagos.db"));
    ServidorEmbebido::crearBase(archivo, true);
    const long antes = contar(archivo, "SELECT count(*) FROM MOVIMIENTOS");

    QElapsedTimer reloj;
    reloj.start();
    std::vector<std::unique_ptr<QProcess>> procesos;
    for (int k = 0; k < mostradores; ++k) {
        auto p = std::make_unique<QProcess>();
        p->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        p->start(QStringLiteral(OPERADOR_DE_ENTRADA),
                 {archivo, QString::number(entradas), QStringLiteral("M%1").arg(k), QStringLiteral("100")});
        procesos.push_back(std::move(p));
    }
    int fallidos = 0;
    for (auto& p : procesos) {
        p->waitForFinished(-1);
        if (p->exitStatus() != QProcess::NormalExit || p->exitCode() != 0) {
            ++fallidos;
            std::printf("  %s", p->readAllStandardOutput().constData());
        }
    }
    const double segundos = reloj.elapsed() / 1000.0;

    const long enviadas = long(mostradores) * entradas;
    const long guardadas = contar(archivo, "SELECT count(*) FROM MOVIMIENTOS") - antes;
    // The notes of the stored rows name every entry once.
    const long notas = contar(archivo, "SELECT count(DISTINCT obs) FROM MOVIMIENTOS WHERE obs GLOB 'M*-*/*'");
    // Entries whose sequence another counter took between the preparation and the insert.
    const long movidas = contar(archivo, "SELECT count(*) FROM MOVIMIENTOS WHERE obs GLOB 'M*-*/*'"
                                         " AND CAST(substr(obs, instr(obs, '/') + 1) AS INTEGER) <> SECUENCIA");
    std::printf("%d mostradores x %d entradas: enviadas %ld, guardadas %ld, perdidas %ld, notas distintas %ld, "
                "claves repetidas %ld, movidas a la siguiente secuencia libre %ld (%.0f %%), operadores con fallo %d, "
                "%.1f s (%.1f entradas/s)\n",
                mostradores, entradas, enviadas, guardadas, enviadas - guardadas, notas,
                contar(archivo, "SELECT count(*) - count(DISTINCT FECHA || '/' || SECUENCIA) FROM MOVIMIENTOS"), movidas,
                100.0 * double(movidas) / double(std::max(1L, guardadas)), fallidos, segundos, guardadas / segundos);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int entradas = argc > 1 ? std::max(1, atoi(argv[1])) : 40;
    for (int mostradores : {2, 5})
        ronda(mostradores, entradas);
    return 0;
}
