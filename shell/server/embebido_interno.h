#pragma once
// The embedded server's own tools, shared by its parts (embebido.cpp, the
// procedure files, the adapter of raw texts): statements, the connection's
// functions, and the transaction around a run. Only those files include it.
#include "embebido.h"
#include "fallo.h"
#include "guardia.h"
#include "lector_tsql.h"
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

namespace embebido {

// ---------------------------------------------------------------------------
// Statements and the connection
// ---------------------------------------------------------------------------

struct FinalizarSentencia {
    void operator()(sqlite3_stmt* s) const { sqlite3_finalize(s); }
};
using Sentencia = std::unique_ptr<sqlite3_stmt, FinalizarSentencia>;

inline QString mensaje(sqlite3* bd) { return QString::fromUtf8(sqlite3_errmsg(bd)); }

// A statement run only for its effect (PRAGMA, BEGIN, COMMIT); a failure is the server's.
inline void ejecutarDirecto(sqlite3* bd, const char* sql)
{
    char* error = nullptr;
    if (sqlite3_exec(bd, sql, nullptr, nullptr, &error) != SQLITE_OK) {
        const QString texto = error ? QString::fromUtf8(error) : mensaje(bd);
        sqlite3_free(error);
        throw FalloEjecucion::servidor(texto);
    }
}

inline void ejecutarDirecto(sqlite3* bd, const QByteArray& sql) { ejecutarDirecto(bd, sql.constData()); }

// GETDATE(): the server's clock, which on this server is the machine's own,
// as the text 'yyyy-mm-dd hh:mm:ss.zzz' in local time.
inline void funcionGetDate(sqlite3_context* ctx, int, sqlite3_value**)
{
    const QByteArray ahora = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")).toUtf8();
    sqlite3_result_text(ctx, ahora.constData(), int(ahora.size()), SQLITE_TRANSIENT);
}

// Digits with an optional sign and at most one '.' as decimal point, at least one digit.
inline bool esDecimalConPunto(const QString& t)
{
    int digitos = 0, puntos = 0;
    for (qsizetype i = 0; i < t.size(); ++i) {
        const QChar c = t[i];
        if (c.isDigit() && c.unicode() < 128)
            ++digitos;
        else if (c == QLatin1Char('.'))
            ++puntos;
        else if (i == 0 && (c == QLatin1Char('+') || c == QLatin1Char('-')))
            continue;
        else
            return false;
    }
    return digitos > 0 && puntos <= 1;
}

// num_coma(texto): an amount written the business's way, as some procedures
// receive it from the screens, read as a number. The client turns every '.'
// of a screen value into ',', so "1.234,50" may arrive as "1,234,50"; the rule
// is therefore:
//  - with at least one ',', the LAST ',' is the decimal mark and every other
//    '.' or ',' is a thousands mark: "1,234,50" -> 1234.5, "1.234,50" -> 1234.5,
//    "45,5" -> 45.5, "1,234,5678" -> 1234.5678;
//  - without a ',', one '.' is a decimal point ("12.5" -> 12.5) and several
//    '.' are thousands marks ("1.234.567" -> 1234567);
//  - blanks around are ignored, an empty text is 0, NULL stays NULL, a number
//    passes through; any other text is the server's conversion error.
inline void funcionNumComa(sqlite3_context* ctx, int, sqlite3_value** argv)
{
    switch (sqlite3_value_type(argv[0])) {
    case SQLITE_NULL:
        sqlite3_result_null(ctx);
        return;
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
        sqlite3_result_double(ctx, sqlite3_value_double(argv[0]));
        return;
    default:
        break;
    }
    const auto* crudo = reinterpret_cast<const char*>(sqlite3_value_text(argv[0]));
    QString t = QString::fromUtf8(crudo, sqlite3_value_bytes(argv[0])).trimmed();
    if (t.isEmpty()) {
        sqlite3_result_double(ctx, 0.0);
        return;
    }
    const qsizetype coma = t.lastIndexOf(QLatin1Char(','));
    if (coma >= 0) {
        QString entera = t.left(coma);
        entera.remove(QLatin1Char('.')).remove(QLatin1Char(','));
        t = entera + QLatin1Char('.') + t.mid(coma + 1);
    } else if (t.count(QLatin1Char('.')) > 1) {
        t.remove(QLatin1Char('.'));
    }
    if (!esDecimalConPunto(t)) {
        sqlite3_result_error(ctx, "Error converting data type varchar to numeric.", -1);
        return;
    }
    sqlite3_result_double(ctx, t.toDouble());
}

// The period of the statistics, as the screens send it typed: TRU_Mes takes a
// four-digit year followed by the month, 1 to 12, with or without its zero
// ("202601" and "20261" are January 2026) and gives it as yyyymm; TRU_Ano
// takes a four-digit year. Any other text gives NULL, which matches no date.
inline bool soloCifras(const QByteArray& t)
{
    return std::all_of(t.begin(), t.end(), [](char c) { return c >= '0' && c <= '9'; });
}

inline QByteArray textoDe(sqlite3_value* valor)
{
    if (sqlite3_value_type(valor) == SQLITE_NULL)
        return {};
    return QByteArray(reinterpret_cast<const char*>(sqlite3_value_text(valor)), sqlite3_value_bytes(valor));
}

inline void funcionMes(sqlite3_context* ctx, int, sqlite3_value** argv)
{
    const QByteArray t = textoDe(argv[0]);
    const int mes = t.mid(4).toInt();
    if ((t.size() != 5 && t.size() != 6) || !soloCifras(t) || mes < 1 || mes > 12) {
        sqlite3_result_null(ctx);
        return;
    }
    const QByteArray periodo = t.left(4) + QByteArray::number(mes).rightJustified(2, '0');
    sqlite3_result_text(ctx, periodo.constData(), int(periodo.size()), SQLITE_TRANSIENT);
}

inline void funcionAno(sqlite3_context* ctx, int, sqlite3_value** argv)
{
    const QByteArray t = textoDe(argv[0]);
    if (t.size() != 4 || !soloCifras(t)) {
        sqlite3_result_null(ctx);
        return;
    }
    sqlite3_result_text(ctx, t.constData(), int(t.size()), SQLITE_TRANSIENT);
}

// The connection settings shared by the processes of one machine, and the
// functions that the procedures and the client's statements use.
inline void prepararConexion(sqlite3* bd)
{
    sqlite3_busy_timeout(bd, 10000);
    ejecutarDirecto(bd, "PRAGMA journal_mode=WAL");
    ejecutarDirecto(bd, "PRAGMA synchronous=FULL");
    ejecutarDirecto(bd, "PRAGMA foreign_keys=OFF");
    // Pages are read through a memory map and kept in a larger cache: a
    // console query of many rows walks the table by its key, page after page.
    ejecutarDirecto(bd, "PRAGMA mmap_size=268435456");
    ejecutarDirecto(bd, "PRAGMA cache_size=-32768");
    int r = sqlite3_create_function_v2(bd, "GETDATE", 0, SQLITE_UTF8, nullptr, funcionGetDate, nullptr, nullptr, nullptr);
    if (r == SQLITE_OK)
        r = sqlite3_create_function_v2(bd, "num_coma", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                                       funcionNumComa, nullptr, nullptr, nullptr);
    for (const auto& [nombre, funcion] : {std::pair {"TRU_Mes", &funcionMes}, std::pair {"TRU_Ano", &funcionAno}})
        if (r == SQLITE_OK)
            r = sqlite3_create_function_v2(bd, nombre, 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr, funcion,
                                           nullptr, nullptr, nullptr);
    if (r == SQLITE_OK)
        r = Registra_Pliega(bd); // searches ignore capitals and accents
    if (r == SQLITE_OK)
        r = Registra_Espanol(bd); // names come in the order of SQL Server's Spanish collation
    if (r != SQLITE_OK)
        throw FalloEjecucion::servidor(mensaje(bd));
}

inline sqlite3* abrirArchivo(const QString& archivo, int banderas)
{
    sqlite3* bd = nullptr;
    const int r = sqlite3_open_v2(QFile::encodeName(archivo).constData(), &bd, banderas, nullptr);
    if (r != SQLITE_OK) {
        const QString texto = bd ? mensaje(bd) : QString::fromUtf8(sqlite3_errstr(r));
        sqlite3_close_v2(bd);
        throw FalloEjecucion::conexion(QStringLiteral("%1 (%2)").arg(texto, archivo));
    }
    sqlite3_extended_result_codes(bd, 1);
    return bd;
}

// ---------------------------------------------------------------------------
// Running statements
// ---------------------------------------------------------------------------

// Compiles the statements of a text in order. Stops at the first that does not
// compile: then false, with its position in the text in *fallo.
inline bool prepararTodas(sqlite3* bd, const QByteArray& texto, int desde, std::vector<Sentencia>& sentencias, int* fallo)
{
    const char* inicio = texto.constData();
    const char* resto = inicio + desde;
    const char* fin = inicio + texto.size();
    while (resto < fin) {
        sqlite3_stmt* s = nullptr;
        const char* cola = nullptr;
        if (sqlite3_prepare_v2(bd, resto, int(fin - resto), &s, &cola) != SQLITE_OK) {
            *fallo = int(resto - inicio);
            return false;
        }
        if (s) // blanks and comments compile to nothing
            sentencias.emplace_back(s);
        resto = cola;
    }
    return true;
}

// The server's message of a failed statement; the statement is reset so that
// the transaction around it can be rolled back at once.
inline FalloEjecucion falloDeSentencia(sqlite3* bd, sqlite3_stmt* s)
{
    const QString texto = mensaje(bd);
    sqlite3_reset(s);
    return FalloEjecucion::servidor(texto);
}

// The texts of a column met lately: a text that comes again (the day, the
// operator, the bank, a client's name) shares one string instead of making a
// new one for every row of a long list. The last one is checked first; the
// others sit in a small table by a hash of their bytes, a newer text taking
// the place of an older one.
class TextosRecientes {
public:
    const QString& texto(const char* bytes, size_t largo)
    {
        if (ultima_ && igual(*ultima_, bytes, largo))
            return ultima_->texto;
        if (ranuras_.empty())
            ranuras_.resize(kRanuras);
        uint32_t h = 2166136261u; // FNV-1a
        for (size_t i = 0; i < largo; ++i)
            h = (h ^ uint8_t(bytes[i])) * 16777619u;
        Ranura& r = ranuras_[h & (kRanuras - 1)];
        if (!igual(r, bytes, largo)) {
            r.bytes.assign(bytes, largo);
            r.texto = QString::fromUtf8(bytes, qsizetype(largo));
        }
        ultima_ = &r;
        return r.texto;
    }

private:
    static constexpr size_t kRanuras = 1024;
    struct Ranura {
        std::string bytes;
        QString texto;
    };
    static bool igual(const Ranura& r, const char* bytes, size_t largo)
    {
        return r.bytes.size() == largo && std::memcmp(r.bytes.data(), bytes, largo) == 0;
    }
    std::vector<Ranura> ranuras_;
    Ranura* ultima_ = nullptr;
};

// The rows of a statement, each handed to the receptor as it is read.
inline void leerFilas(sqlite3* bd, sqlite3_stmt* s, Receptor& receptor)
{
    const int columnas = sqlite3_column_count(s);
    QStringList nombres;
    for (int c = 0; c < columnas; ++c)
        nombres << QString::fromUtf8(sqlite3_column_name(s, c));
    receptor.conjunto(nombres);
    std::vector<TextosRecientes> recientes(static_cast<size_t>(columnas));
    std::vector<Valor> fila; // kept from row to row unless the receptor takes it
    for (;;) {
        const int r = sqlite3_step(s);
        if (r == SQLITE_DONE)
            break;
        if (r != SQLITE_ROW)
            throw falloDeSentencia(bd, s);
        fila.clear();
        fila.reserve(size_t(columnas));
        for (int c = 0; c < columnas; ++c) {
            switch (sqlite3_column_type(s, c)) {
            case SQLITE_INTEGER:
                fila.emplace_back(int64_t(sqlite3_column_int64(s, c)));
                break;
            case SQLITE_FLOAT:
                fila.emplace_back(sqlite3_column_double(s, c));
                break;
            case SQLITE_TEXT: {
                const char* texto = reinterpret_cast<const char*>(sqlite3_column_text(s, c));
                const size_t largo = size_t(sqlite3_column_bytes(s, c));
                fila.emplace_back(recientes[size_t(c)].texto(texto, largo));
                break;
            }
            case SQLITE_BLOB: {
                const void* datos = sqlite3_column_blob(s, c);
                fila.emplace_back(QByteArray(static_cast<const char*>(datos), sqlite3_column_bytes(s, c)));
                break;
            }
            default:
                fila.emplace_back();
            }
        }
        receptor.fila(fila);
    }
}

// Runs one statement; a statement with columns hands over its result set, even empty.
inline void correr(sqlite3* bd, sqlite3_stmt* s, Receptor& receptor)
{
    if (sqlite3_column_count(s) > 0) {
        leerFilas(bd, s, receptor);
        return;
    }
    int r;
    while ((r = sqlite3_step(s)) == SQLITE_ROW) {}
    if (r != SQLITE_DONE)
        throw falloDeSentencia(bd, s);
}

// One transaction around a run: all of it or nothing of it.
class Transaccion {
public:
    Transaccion(sqlite3* bd, bool escribe) : bd_(bd), escribe_(escribe)
    {
        ejecutarDirecto(bd_, escribe ? "BEGIN IMMEDIATE" : "BEGIN");
    }
    ~Transaccion()
    {
        if (!cerrada_)
            sqlite3_exec(bd_, "ROLLBACK", nullptr, nullptr, nullptr);
    }
    void confirmar()
    {
        // A write goes only into the file that stands at the database's path:
        // into a file deleted or replaced meanwhile it would be acknowledged
        // and lost. Refused, it is rolled back with the transaction.
        if (escribe_ && Revision::Archivo_Movido(bd_))
            throw FalloEjecucion::conexion(
                QStringLiteral("La base de datos ya no es el archivo %1: fue borrada, movida o reemplazada "
                               "mientras el programa trabajaba. Este cambio no se grabó. Cierre el programa y "
                               "vuelva a abrirlo.")
                    .arg(QString::fromUtf8(sqlite3_db_filename(bd_, "main"))));
        ejecutarDirecto(bd_, "COMMIT");
        cerrada_ = true;
    }

private:
    sqlite3* bd_;
    bool escribe_;
    bool cerrada_ = false;
};

inline bool algunaEscribe(const std::vector<Sentencia>& sentencias)
{
    for (const auto& s : sentencias)
        if (!sqlite3_stmt_readonly(s.get()))
            return true;
    return false;
}

// The procedure files and their calls (embebido_procedimientos.cpp).
// A procedure as its file declares it: its parameters, in order, and its body.
enum class Tipo { Entero, Real, Texto, Bytes, FechaHora };

struct ParametroDeclarado {
    QString nombre; // with its '@'
    Tipo tipo = Tipo::Texto;
    bool tieneDefecto = false;
    Valor defecto;
};

struct Definicion {
    QString nombre;
    std::vector<ParametroDeclarado> parametros;
    QByteArray cuerpo;
};

// The procedures compiled into the program, read and parsed once per process.
std::shared_ptr<const Definicion> definicion(const QString& nombre);
Definicion leerDefinicion(const QString& nombre, const QByteArray& texto);
void correrProcedimiento(sqlite3* bd, const Definicion& d, const std::vector<Parametro>& valores, Receptor& receptor);
// Compiles a body without running it; every statement names declared parameters only.
void compilarProcedimiento(sqlite3* bd, const Definicion& d);

// The raw T-SQL texts adapted to this server (embebido_adaptador.cpp).
using LectorTsql::Pieza;
using LectorTsql::Piezas;
using LectorTsql::sintaxis;
QString adaptarConsulta(const QString& sql, const Piezas& piezas);
QString adaptarCambio(const QString& sql, const Piezas& piezas, size_t desde, size_t hasta,
                      const ServidorEmbebido::EsquemaTablas& esquema);
std::vector<ServidorEmbebido::ColumnaTabla> columnasDe(sqlite3* bd, const QString& tabla);

} // namespace embebido
