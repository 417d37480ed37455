#include "embebido_interno.h"

#include "fallo.h"
#include "guardia.h"
#include "pliegue.h"
#include "recursos_bd.h"
#include "permisos.h"
#include "revision.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QMutex>
#include <QMutexLocker>
#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <cmath>
#include <memory>
#include <string>
#include <sqlite3.h>
#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/types.h>
#endif

using namespace embebido;

// ---------------------------------------------------------------------------
// ServidorEmbebido
// ---------------------------------------------------------------------------

namespace {

const char* const kSufijosDelArchivo[] = {"", "-wal", "-shm", "-journal"};

// True while the process of that number runs.
bool procesoVivo(qint64 pid)
{
#ifdef Q_OS_UNIX
    return pid > 0 && (::kill(pid_t(pid), 0) == 0 || errno != ESRCH);
#else
    return pid > 0;
#endif
}

// A program ended while it created the database leaves its file under the
// name of the creation ("<file>.creando-<process>") with its log beside it.
// Whatever a creation whose process is gone left is removed.
void borrarCreacionesMuertas(const QString& archivo)
{
    const QFileInfo info(archivo);
    const QString prefijo = info.fileName() + QStringLiteral(".creando-");
    const QStringList restos = info.dir().entryList({prefijo + QLatin1Char('*')}, QDir::Files | QDir::Hidden);
    for (const QString& resto : restos) {
        QString pid = resto.mid(prefijo.size());
        for (const char* sufijo : kSufijosDelArchivo)
            if (*sufijo && pid.endsWith(QLatin1String(sufijo)))
                pid.chop(qsizetype(strlen(sufijo)));
        bool numero = false;
        const qint64 proceso = pid.toLongLong(&numero);
        if (numero && !procesoVivo(proceso))
            QFile::remove(info.dir().filePath(resto));
    }
}

} // namespace

ServidorEmbebido::ServidorEmbebido(QString archivo) : archivo_(std::move(archivo)) {}

ServidorEmbebido::~ServidorEmbebido() { cerrar(); }

void ServidorEmbebido::crearBase(const QString& archivo, bool conDemo)
{
    if (QFileInfo::exists(archivo))
        throw FalloEjecucion::conexion(QStringLiteral("The database file already exists. (%1)").arg(archivo));
    Permisos::Crear_Carpeta(QFileInfo(archivo).absolutePath());
    borrarCreacionesMuertas(archivo);
    // Built under a name of its own and moved into place when complete, so that
    // no client ever opens a half-made database.
    const QString temporal = QStringLiteral("%1.creando-%2").arg(archivo).arg(QCoreApplication::applicationPid());
    const auto borrarTemporal = [&temporal] {
        for (const char* sufijo : kSufijosDelArchivo)
            QFile::remove(temporal + QLatin1String(sufijo));
    };
    borrarTemporal();
    // The books are the office's alone: readable by this account only (the
    // engine gives its log files the rights of the database file).
    if (!Permisos::Crear_Archivo(temporal))
        throw FalloEjecucion::conexion(QStringLiteral("No se puede crear el archivo %1").arg(temporal));
    sqlite3* bd = abrirArchivo(temporal, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    try {
        prepararConexion(bd);
        {
            Transaccion transaccion(bd, true);
            ejecutarDirecto(bd, RecursosBd::leer(QStringLiteral("esquema.sql")));
            if (conDemo)
                ejecutarDirecto(bd, RecursosBd::leer(QStringLiteral("demo.sql")));
            // The two pictures every database needs: a client without photo, and a client under review.
            sqlite3_stmt* crudo = nullptr;
            if (sqlite3_prepare_v2(bd, "INSERT OR REPLACE INTO fotos (cliente, img) VALUES (?, ?)", -1, &crudo, nullptr) !=
                SQLITE_OK)
                throw FalloEjecucion::servidor(mensaje(bd));
            Sentencia foto(crudo);
            for (const auto& [cliente, ruta] : {std::pair {0, "fotos/sin_foto.png"}, std::pair {9999, "fotos/revision.png"}}) {
                const QByteArray img = RecursosBd::leer(QLatin1String(ruta));
                sqlite3_reset(foto.get());
                sqlite3_bind_int(foto.get(), 1, cliente);
                sqlite3_bind_blob(foto.get(), 2, img.constData(), int(img.size()), SQLITE_TRANSIENT);
                if (sqlite3_step(foto.get()) != SQLITE_DONE)
                    throw FalloEjecucion::servidor(mensaje(bd));
            }
            transaccion.confirmar();
        }
        if (sqlite3_close(bd) != SQLITE_OK) // the last close folds the log into the file
            throw FalloEjecucion::servidor(mensaje(bd));
        bd = nullptr;
        if (!QFile::rename(temporal, archivo))
            throw FalloEjecucion::conexion(QStringLiteral("The database file cannot be put in place. (%1)").arg(archivo));
    } catch (const std::runtime_error& e) {
        sqlite3_close_v2(bd);
        borrarTemporal();
        if (const auto* f = dynamic_cast<const FalloEjecucion*>(&e))
            throw *f;
        throw FalloEjecucion::servidor(QString::fromUtf8(e.what())); // a resource missing from the program
    }
}

void ServidorEmbebido::abrir()
{
    cerrar();
    // The database is made at the start-up, never here: a mistyped path must
    // not turn into a new, empty book that the operators take for theirs.
    if (!QFileInfo(archivo_).isFile())
        throw FalloEjecucion::conexion(QStringLiteral("No se encuentra la base de datos %1").arg(archivo_));
    if (const int version = Revision::Version_De(archivo_); version > Revision::Version_Programa())
        throw FalloEjecucion::conexion(
            QStringLiteral("La base de datos %1 es de una versión más nueva del programa (esquema %2; este "
                           "programa trabaja con el %3). Instale la versión actual del programa.")
                .arg(archivo_)
                .arg(version)
                .arg(Revision::Version_Programa()));
    sqlite3* bd = abrirArchivo(archivo_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX);
    try {
        prepararConexion(bd);
    } catch (const FalloEjecucion& f) {
        sqlite3_close_v2(bd);
        throw FalloEjecucion::conexion(f.texto());
    }
    bd_ = bd;
}

void ServidorEmbebido::cerrar()
{
    if (bd_) {
        sqlite3_close_v2(bd_);
        bd_ = nullptr;
    }
}

sqlite3* ServidorEmbebido::conexion()
{
    if (!bd_)
        throw FalloEjecucion::objetoCerrado();
    return bd_;
}

Resultados ServidorEmbebido::procedimiento(const QString& nombre, const std::vector<Parametro>& valores)
{
    Acumulador resultados;
    procedimientoPorFilas(nombre, valores, resultados);
    return std::move(resultados.resultados);
}

void ServidorEmbebido::procedimientoPorFilas(const QString& nombre, const std::vector<Parametro>& valores, Receptor& receptor)
{
    sqlite3* bd = conexion();
    correrProcedimiento(bd, *definicion(nombre), valores, receptor);
}

QStringList ServidorEmbebido::procedimientos() { return RecursosBd::procedimientos(); }

void ServidorEmbebido::compilar(const QString& nombre)
{
    sqlite3* bd = conexion();
    compilarProcedimiento(bd, *definicion(nombre));
}

Resultados ServidorEmbebido::procedimientoDeTexto(const QString& nombre, const QByteArray& texto,
                                                  const std::vector<Parametro>& valores)
{
    sqlite3* bd = conexion();
    Acumulador resultados;
    correrProcedimiento(bd, leerDefinicion(nombre, texto), valores, resultados);
    return std::move(resultados.resultados);
}

QStringList ServidorEmbebido::adaptar(const QString& sql, bool esConsulta, const EsquemaTablas& esquema)
{
    const Piezas piezas = LectorTsql::trocear(sql);
    if (piezas.empty())
        throw sintaxis(sql.trimmed());
    if (esConsulta)
        return {adaptarConsulta(sql, piezas)};
    QStringList sentencias;
    for (const auto& [desde, hasta] : LectorTsql::sentencias(piezas))
        sentencias << adaptarCambio(sql, piezas, desde, hasta, esquema);
    return sentencias;
}

Resultados ServidorEmbebido::abrirConsulta(const QString& sql)
{
    sqlite3* bd = conexion();
    Guardia::consulta(sql);
    const QStringList adaptada = adaptar(sql, true);
    std::vector<Sentencia> sentencias;
    int fallo = 0;
    if (!prepararTodas(bd, adaptada.first().toUtf8(), 0, sentencias, &fallo))
        throw FalloEjecucion::servidor(mensaje(bd));
    if (sentencias.size() != 1)
        throw sintaxis(sql.trimmed());
    Acumulador resultados;
    correr(bd, sentencias.front().get(), resultados);
    return std::move(resultados.resultados);
}

namespace {

// The transactions of a batch that another client changed or deleted after
// the screen loaded them: read inside the batch's write transaction, which
// holds the file's write lock from its start (BEGIN IMMEDIATE), so no one
// writes between this reading and the batch. A row that is gone has changed;
// a row without a version row is version 0.
void comprobarVersiones(sqlite3* bd, const VersionesEsperadas& esperadas)
{
    if (esperadas.empty())
        return;
    sqlite3_stmt* crudo = nullptr;
    if (sqlite3_prepare_v2(bd,
                           "SELECT COALESCE(v.version, 0) FROM MOVIMIENTOS m LEFT JOIN MOVIMIENTOS_VERSION v"
                           " ON v.FECHA = m.FECHA AND v.SECUENCIA = m.SECUENCIA WHERE m.FECHA = ?1 AND m.SECUENCIA = ?2",
                           -1, &crudo, nullptr) != SQLITE_OK)
        throw FalloEjecucion::servidor(mensaje(bd));
    const Sentencia lectura(crudo);
    std::vector<std::pair<QString, int>> cambiadas;
    for (const VersionEsperada& e : esperadas) {
        sqlite3_reset(lectura.get());
        const QByteArray fecha = e.fecha.toUtf8();
        sqlite3_bind_text(lectura.get(), 1, fecha.constData(), int(fecha.size()), SQLITE_TRANSIENT);
        sqlite3_bind_int(lectura.get(), 2, e.secuencia);
        const int r = sqlite3_step(lectura.get());
        if (r != SQLITE_ROW && r != SQLITE_DONE)
            throw falloDeSentencia(bd, lectura.get());
        if (r == SQLITE_DONE || sqlite3_column_int64(lectura.get(), 0) != e.version)
            cambiadas.emplace_back(e.fecha, e.secuencia);
    }
    if (!cambiadas.empty())
        throw FalloFilasCambiadas(std::move(cambiadas));
}

} // namespace

void ServidorEmbebido::ejecutar(const QString& sql, int cuantas, const VersionesEsperadas& esperadas)
{
    sqlite3* bd = conexion();
    Guardia::cambios(sql, cuantas);
    const QStringList adaptadas = adaptar(sql, false, [bd](const QString& tabla) { return columnasDe(bd, tabla); });
    // Every statement compiles before any of them runs: a statement broken by a
    // quote in a value stops the whole batch with nothing written.
    std::vector<Sentencia> sentencias;
    for (const QString& texto : adaptadas) {
        const size_t antes = sentencias.size();
        int fallo = 0;
        if (!prepararTodas(bd, texto.toUtf8(), 0, sentencias, &fallo))
            throw FalloEjecucion::servidor(mensaje(bd));
        if (sentencias.size() != antes + 1)
            throw sintaxis(texto);
    }
    Acumulador nada;
    Transaccion transaccion(bd, true);
    comprobarVersiones(bd, esperadas);
    for (const auto& s : sentencias)
        correr(bd, s.get(), nada);
    transaccion.confirmar();
}
