// The daily copy of the embedded database at start-up: for a demo database
// grown to about 130,000 and 520,000 transactions, the time of the day's copy
// (online backup, integrity check, rotation) and the time a later start of the
// same day spends finding that copy sound. Then the checks every start makes
// on the books before LOGIN: the quick check (header, quick_check, the main
// tables), the full integrity check and the reading of the schema's version,
// each the median of five runs with the file in the system's cache, and once
// with the file's pages put out of the cache (cold; not shown when the system
// keeps them).
//
//   bench_copias                   builds the databases and prints the figures
//   bench_copias <transacciones>   the figures for one size only
#include "copias.h"
#include "embebido.h"
#include "medicion.h"
#include "revision.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <sqlite3.h>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>

namespace {

// The file written to disk and its pages put out of the system's cache, without
// touching anything else the system keeps; true when no more than a twentieth
// of its pages are still in memory afterwards.
bool sacarDeMemoria(const QString& archivo)
{
    const int fd = ::open(QFile::encodeName(archivo).constData(), O_RDONLY);
    if (fd < 0)
        return false;
    ::fdatasync(fd);
    ::posix_fadvise(fd, 0, 0, POSIX_FADV_DONTNEED);
    bool fuera = false;
    const off_t largo = ::lseek(fd, 0, SEEK_END);
    const long pagina = ::sysconf(_SC_PAGESIZE);
    if (largo > 0) {
        void* mapa = ::mmap(nullptr, largo, PROT_READ, MAP_SHARED, fd, 0);
        if (mapa != MAP_FAILED) {
            std::vector<unsigned char> residente((largo + pagina - 1) / pagina);
            if (::mincore(mapa, largo, residente.data()) == 0) {
                const auto enMemoria = std::count_if(residente.begin(), residente.end(), [](unsigned char r) { return r & 1; });
                fuera = enMemoria * 20 <= static_cast<long>(residente.size());
            }
            ::munmap(mapa, largo);
        }
    }
    ::close(fd);
    return fuera;
}

// One run of f with the file out of the cache, in milliseconds; -1 when the
// system would not let the file go.
template <class F> double enFrio(const QString& archivo, F&& f)
{
    if (!sacarDeMemoria(archivo))
        return -1;
    QElapsedTimer t;
    t.start();
    f();
    return t.nsecsElapsed() / 1e6;
}

// A cold figure in milliseconds with the given decimals, or "n/d".
QByteArray cifra(double ms, int decimales)
{
    return ms < 0 ? QByteArrayLiteral("n/d") : QByteArray::number(ms, 'f', decimales) + " ms";
}

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

    // The checks of every start on the same books, the file in the cache: a
    // first run fills the cache, the median of five follows.
    const int version = Revision::Version_Programa();
    bool sana = true;
    auto rapida = [&] { sana = Revision::Danos(archivo, true).isEmpty() && sana; };
    auto completa = [&] { sana = Revision::Danos(archivo, false).isEmpty() && sana; };
    auto leerVersion = [&] { sana = Revision::Version_De(archivo) == version && sana; };
    rapida();
    const double rapidaCaliente = medianaDe(5, rapida);
    const double completaCaliente = medianaDe(5, completa);
    const double versionCaliente = medianaDe(5, leerVersion);
    const double rapidaFrio = enFrio(archivo, rapida);
    const double completaFrio = enFrio(archivo, completa);
    const double versionFrio = enFrio(archivo, leerVersion);
    if (!sana)
        std::printf("FALLO: la revisión encontró daños o la versión no es %d\n", version);
    std::printf("%7s revisión al inicio %7.1f ms (frío %s); integridad completa %8.1f ms (frío %s); versión %6.2f ms (frío %s)\n",
                "", rapidaCaliente, cifra(rapidaFrio, 1).constData(), completaCaliente, cifra(completaFrio, 1).constData(),
                versionCaliente, cifra(versionFrio, 2).constData());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (argc > 1) {
        medir(QString::fromLatin1(argv[1]).toInt());
        return 0;
    }
    medir(0);
    medir(100000);
    medir(400000);
    return 0;
}
