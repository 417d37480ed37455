#include "embebido.h"
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

namespace {

// ---------------------------------------------------------------------------
// Statements and the connection
// ---------------------------------------------------------------------------

struct FinalizarSentencia {
    void operator()(sqlite3_stmt* s) const { sqlite3_finalize(s); }
};
using Sentencia = std::unique_ptr<sqlite3_stmt, FinalizarSentencia>;

QString mensaje(sqlite3* bd) { return QString::fromUtf8(sqlite3_errmsg(bd)); }

// A statement run only for its effect (PRAGMA, BEGIN, COMMIT); a failure is the server's.
void ejecutarDirecto(sqlite3* bd, const char* sql)
{
    char* error = nullptr;
    if (sqlite3_exec(bd, sql, nullptr, nullptr, &error) != SQLITE_OK) {
        const QString texto = error ? QString::fromUtf8(error) : mensaje(bd);
        sqlite3_free(error);
        throw FalloEjecucion::servidor(texto);
    }
}

void ejecutarDirecto(sqlite3* bd, const QByteArray& sql) { ejecutarDirecto(bd, sql.constData()); }

// GETDATE(): the server's clock, which on this server is the machine's own,
// as the text 'yyyy-mm-dd hh:mm:ss.zzz' in local time.
void funcionGetDate(sqlite3_context* ctx, int, sqlite3_value**)
{
    const QByteArray ahora = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")).toUtf8();
    sqlite3_result_text(ctx, ahora.constData(), int(ahora.size()), SQLITE_TRANSIENT);
}

// Digits with an optional sign and at most one '.' as decimal point, at least one digit.
bool esDecimalConPunto(const QString& t)
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
void funcionNumComa(sqlite3_context* ctx, int, sqlite3_value** argv)
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
bool soloCifras(const QByteArray& t)
{
    return std::all_of(t.begin(), t.end(), [](char c) { return c >= '0' && c <= '9'; });
}

QByteArray textoDe(sqlite3_value* valor)
{
    if (sqlite3_value_type(valor) == SQLITE_NULL)
        return {};
    return QByteArray(reinterpret_cast<const char*>(sqlite3_value_text(valor)), sqlite3_value_bytes(valor));
}

void funcionMes(sqlite3_context* ctx, int, sqlite3_value** argv)
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

void funcionAno(sqlite3_context* ctx, int, sqlite3_value** argv)
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
void prepararConexion(sqlite3* bd)
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
        r = sqlite3_create_function_v2(bd, "num_coma", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                                       nullptr, funcionNumComa, nullptr, nullptr, nullptr);
    for (const auto& [nombre, funcion] : {std::pair{"TRU_Mes", &funcionMes}, std::pair{"TRU_Ano", &funcionAno}})
        if (r == SQLITE_OK)
            r = sqlite3_create_function_v2(bd, nombre, 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                                           nullptr, funcion, nullptr, nullptr, nullptr);
    if (r == SQLITE_OK)
        r = Registra_Pliega(bd); // searches ignore capitals and accents
    if (r == SQLITE_OK)
        r = Registra_Espanol(bd); // names come in the order of SQL Server's Spanish collation
    if (r != SQLITE_OK)
        throw FalloEjecucion::servidor(mensaje(bd));
}

sqlite3* abrirArchivo(const QString& archivo, int banderas)
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
bool prepararTodas(sqlite3* bd, const QByteArray& texto, int desde, std::vector<Sentencia>& sentencias, int* fallo)
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
FalloEjecucion falloDeSentencia(sqlite3* bd, sqlite3_stmt* s)
{
    const QString texto = mensaje(bd);
    sqlite3_reset(s);
    return FalloEjecucion::servidor(texto);
}

ConjuntoResultados leerFilas(sqlite3* bd, sqlite3_stmt* s)
{
    ConjuntoResultados conjunto;
    const int columnas = sqlite3_column_count(s);
    for (int c = 0; c < columnas; ++c)
        conjunto.columnas << QString::fromUtf8(sqlite3_column_name(s, c));
    // The last text of each column: a column that repeats its text from row to
    // row (the day, the operator, the bank) shares one string instead of
    // making a new one for every row of a long list.
    struct Ultimo {
        std::string bytes;
        QString texto;
    };
    std::vector<Ultimo> ultimos(static_cast<size_t>(columnas));
    for (;;) {
        const int r = sqlite3_step(s);
        if (r == SQLITE_DONE)
            break;
        if (r != SQLITE_ROW)
            throw falloDeSentencia(bd, s);
        std::vector<Valor> fila;
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
                Ultimo& u = ultimos[size_t(c)];
                if (u.bytes.size() != largo || u.bytes.compare(0, largo, texto, largo) != 0) {
                    u.bytes.assign(texto, largo);
                    u.texto = QString::fromUtf8(texto, qsizetype(largo));
                }
                fila.emplace_back(u.texto);
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
        conjunto.filas.push_back(std::move(fila));
    }
    return conjunto;
}

// Runs one statement; a statement with columns adds its result set, even empty.
void correr(sqlite3* bd, sqlite3_stmt* s, Resultados& resultados)
{
    if (sqlite3_column_count(s) > 0) {
        resultados.push_back(leerFilas(bd, s));
        return;
    }
    int r;
    while ((r = sqlite3_step(s)) == SQLITE_ROW) {
    }
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

bool algunaEscribe(const std::vector<Sentencia>& sentencias)
{
    for (const auto& s : sentencias)
        if (!sqlite3_stmt_readonly(s.get()))
            return true;
    return false;
}

// ---------------------------------------------------------------------------
// Procedures: the files of the database folder
// ---------------------------------------------------------------------------

enum class Tipo { Entero, Real, Texto, Bytes, FechaHora };

// A value ready to bind, in the storage class of its parameter.
struct ValorSql {
    enum Clase { Nulo, Entero, Real, Texto, Bytes } clase = Nulo;
    int64_t entero = 0;
    double real = 0;
    QByteArray bytes;
};

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

FalloEjecucion falloDeArchivo(const QString& procedimiento, const QString& linea)
{
    return FalloEjecucion::servidor(QStringLiteral("Procedure '%1': cannot read the parameter line \"%2\".").arg(procedimiento, linea));
}

// The default of a parameter line: NULL, a number, or a quoted text with '' for a quote.
Valor leerLiteral(const QString& texto, bool* bien)
{
    *bien = true;
    const QString t = texto.trimmed();
    if (t.compare(QLatin1String("NULL"), Qt::CaseInsensitive) == 0)
        return {};
    if (t.size() >= 2 && t.startsWith(QLatin1Char('\'')) && t.endsWith(QLatin1Char('\''))) {
        const QString dentro = t.mid(1, t.size() - 2);
        QString r;
        for (qsizetype i = 0; i < dentro.size(); ++i) {
            if (dentro[i] == QLatin1Char('\'')) {
                if (i + 1 >= dentro.size() || dentro[i + 1] != QLatin1Char('\'')) {
                    *bien = false;
                    return {};
                }
                ++i;
            }
            r += dentro[i];
        }
        return r;
    }
    bool entero = false;
    const qlonglong n = t.toLongLong(&entero);
    if (entero)
        return int64_t(n);
    if (esDecimalConPunto(t))
        return t.toDouble();
    *bien = false;
    return {};
}

// A parameter line without the remark that may follow it after "--".
QString sinComentario(const QString& texto)
{
    bool enCadena = false;
    for (qsizetype i = 0; i < texto.size(); ++i) {
        if (texto[i] == QLatin1Char('\''))
            enCadena = !enCadena;
        else if (!enCadena && texto.mid(i, 2) == QLatin1String("--"))
            return texto.left(i).trimmed();
    }
    return texto.trimmed();
}

// "--@param @nombre TIPO [= defecto] [-- remark]"
ParametroDeclarado leerParametro(const QString& procedimiento, const QString& linea)
{
    const QString resto = sinComentario(linea.trimmed().mid(8)); // after "--@param"
    ParametroDeclarado p;
    const qsizetype igual = resto.indexOf(QLatin1Char('='));
    const QString cabeza = igual >= 0 ? resto.left(igual) : resto;
    const QStringList partes = cabeza.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (partes.size() != 2 || !partes[0].startsWith(QLatin1Char('@')) || partes[0].size() < 2)
        throw falloDeArchivo(procedimiento, linea);
    p.nombre = partes[0];
    const QString tipo = partes[1].toUpper();
    if (tipo == QLatin1String("INTEGER"))
        p.tipo = Tipo::Entero;
    else if (tipo == QLatin1String("REAL"))
        p.tipo = Tipo::Real;
    else if (tipo == QLatin1String("TEXT"))
        p.tipo = Tipo::Texto;
    else if (tipo == QLatin1String("BLOB"))
        p.tipo = Tipo::Bytes;
    else if (tipo == QLatin1String("DATETIME"))
        p.tipo = Tipo::FechaHora;
    else
        throw falloDeArchivo(procedimiento, linea);
    if (igual >= 0) {
        bool bien = false;
        p.defecto = leerLiteral(resto.mid(igual + 1), &bien);
        if (!bien)
            throw falloDeArchivo(procedimiento, linea);
        p.tieneDefecto = true;
    }
    return p;
}

Definicion leerDefinicion(const QString& nombre, const QByteArray& texto)
{
    Definicion d;
    d.nombre = nombre;
    d.cuerpo = texto;
    for (const QString& linea : QString::fromUtf8(texto).split(QLatin1Char('\n'))) {
        if (!linea.trimmed().startsWith(QLatin1String("--@param")))
            continue;
        ParametroDeclarado p = leerParametro(nombre, linea);
        for (const auto& otro : d.parametros)
            if (otro.nombre.compare(p.nombre, Qt::CaseInsensitive) == 0)
                throw falloDeArchivo(nombre, linea);
        d.parametros.push_back(std::move(p));
    }
    return d;
}

// The procedures compiled into the program, read and parsed once per process.
std::shared_ptr<const Definicion> definicion(const QString& nombre)
{
    static QMutex candado;
    static QHash<QString, QString> archivos; // lower-case name -> file name
    static QHash<QString, std::shared_ptr<const Definicion>> leidas;
    QMutexLocker bloqueo(&candado);
    if (archivos.isEmpty())
        for (const QString& archivo : RecursosBd::procedimientos())
            archivos.insert(archivo.toLower(), archivo);
    const QString clave = nombre.trimmed().toLower();
    if (auto it = leidas.constFind(clave); it != leidas.constEnd())
        return it.value();
    const auto archivo = archivos.constFind(clave);
    if (archivo == archivos.constEnd())
        throw FalloEjecucion::servidor(QStringLiteral("Could not find stored procedure '%1'.").arg(nombre.trimmed()));
    auto d = std::make_shared<const Definicion>(
        leerDefinicion(archivo.value(), RecursosBd::leer(QStringLiteral("procedimientos/%1.sql").arg(archivo.value()))));
    leidas.insert(clave, d);
    return d;
}

// A real as the shortest text that reads back the same, with '.' for the decimals.
QByteArray textoDeReal(double v)
{
    char buffer[400];
    const auto r = std::to_chars(buffer, buffer + sizeof buffer, v, std::chars_format::fixed);
    if (r.ec != std::errc())
        return QByteArray::number(v, 'g', 17);
    return QByteArray(buffer, int(r.ptr - buffer));
}

FalloEjecucion falloConversion(const QString& valor, const char* tipo)
{
    return FalloEjecucion::servidor(QStringLiteral("Conversion failed when converting the varchar value '%1' to data type %2.")
                                        .arg(valor, QLatin1String(tipo)));
}

// A value of the client turned into the type that the procedure declares, the
// way SQL Server converts the value of a parameter.
ValorSql convertir(const Valor& v, Tipo tipo)
{
    ValorSql r;
    if (v.esNulo())
        return r;
    switch (tipo) {
    case Tipo::Entero:
        r.clase = ValorSql::Entero;
        if (v.esEntero()) {
            r.entero = v.aTexto().toLongLong();
        } else if (v.esReal()) {
            const double d = std::trunc(v.aDouble());
            if (!(d >= -9.2e18 && d <= 9.2e18))
                throw FalloEjecucion::servidor(QStringLiteral("Arithmetic overflow error converting float to data type int."));
            r.entero = int64_t(d);
        } else if (v.esTexto() || v.esBytes()) {
            const QString original = v.aTexto();
            const QString t = original.trimmed();
            if (t.isEmpty())
                return r; // '' is 0 to the server
            qsizetype i = (t[0] == QLatin1Char('+') || t[0] == QLatin1Char('-')) ? 1 : 0;
            if (i == t.size())
                throw falloConversion(original, "int");
            for (; i < t.size(); ++i)
                if (!(t[i].isDigit() && t[i].unicode() < 128))
                    throw falloConversion(original, "int");
            bool bien = false;
            r.entero = t.toLongLong(&bien);
            if (!bien)
                throw FalloEjecucion::servidor(QStringLiteral("The conversion of the varchar value '%1' overflowed an int column.").arg(original));
        } else {
            throw FalloEjecucion::servidor(QStringLiteral("Implicit conversion from data type datetime to int is not allowed."));
        }
        return r;
    case Tipo::Real:
        r.clase = ValorSql::Real;
        if (v.esEntero() || v.esReal()) {
            r.real = v.aDouble();
        } else if (v.esTexto() || v.esBytes()) {
            const QString t = v.aTexto().trimmed();
            if (t.isEmpty())
                return r;
            bool bien = false;
            r.real = t.toDouble(&bien); // the C locale: '.' is the decimal point
            if (!bien || !std::isfinite(r.real))
                throw FalloEjecucion::servidor(QStringLiteral("Error converting data type varchar to float."));
        } else {
            throw FalloEjecucion::servidor(QStringLiteral("Implicit conversion from data type datetime to float is not allowed."));
        }
        return r;
    case Tipo::Texto:
        r.clase = ValorSql::Texto;
        if (v.esReal())
            r.bytes = textoDeReal(v.aDouble());
        else if (v.esFechaHora())
            r.bytes = v.aFechaHora().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")).toUtf8();
        else if (v.esBytes())
            r.bytes = v.aBytes();
        else
            r.bytes = v.aTexto().toUtf8();
        return r;
    case Tipo::Bytes:
        r.clase = ValorSql::Bytes;
        if (v.esReal())
            r.bytes = textoDeReal(v.aDouble());
        else if (v.esFechaHora())
            throw FalloEjecucion::servidor(QStringLiteral("Implicit conversion from data type datetime to varbinary(max) is not allowed."));
        else if (v.esBytes())
            r.bytes = v.aBytes();
        else
            r.bytes = v.aTexto().toUtf8();
        return r;
    case Tipo::FechaHora:
        r.clase = ValorSql::Texto;
        if (v.esFechaHora())
            r.bytes = v.aFechaHora().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")).toUtf8();
        else if (v.esTexto())
            r.bytes = v.aTexto().toUtf8();
        else
            throw FalloEjecucion::servidor(QStringLiteral("Operand type clash: the value is incompatible with datetime."));
        return r;
    }
    return r;
}

// The values of a call, one per declared parameter: the value given at that
// position, or the default when it was left unset.
std::vector<ValorSql> valoresDeLaLlamada(const Definicion& d, const std::vector<Parametro>& valores)
{
    size_t dados = valores.size();
    while (dados > 0 && !valores[dados - 1]) // trailing unset values are not sent
        --dados;
    if (dados > d.parametros.size())
        throw FalloEjecucion::servidor(QStringLiteral("Procedure or function '%1' has too many arguments specified.").arg(d.nombre));
    std::vector<ValorSql> r;
    r.reserve(d.parametros.size());
    for (size_t i = 0; i < d.parametros.size(); ++i) {
        const auto& p = d.parametros[i];
        if (i < dados && valores[i])
            r.push_back(convertir(*valores[i], p.tipo));
        else if (p.tieneDefecto)
            r.push_back(convertir(p.defecto, p.tipo));
        else
            throw FalloEjecucion::servidor(QStringLiteral("Procedure or function '%1' expects parameter '%2', which was not supplied.")
                                               .arg(d.nombre, p.nombre));
    }
    return r;
}

// Binds every @name of a statement to the declared parameter of that name,
// whatever its capitals, as T-SQL names are.
size_t parametroDeclarado(sqlite3_stmt* s, int i, const Definicion& d)
{
    const char* crudo = sqlite3_bind_parameter_name(s, i);
    const QString nombre = crudo ? QString::fromUtf8(crudo) : QStringLiteral("?");
    for (size_t k = 0; k < d.parametros.size(); ++k)
        if (d.parametros[k].nombre.compare(nombre, Qt::CaseInsensitive) == 0)
            return k;
    throw FalloEjecucion::servidor(QStringLiteral("Must declare the scalar variable \"%1\".").arg(nombre));
}

void enlazar(sqlite3* bd, sqlite3_stmt* s, const Definicion& d, const std::vector<ValorSql>& valores)
{
    const int cuantos = sqlite3_bind_parameter_count(s);
    for (int i = 1; i <= cuantos; ++i) {
        const ValorSql& v = valores[parametroDeclarado(s, i, d)];
        int r = SQLITE_OK;
        switch (v.clase) {
        case ValorSql::Nulo:
            r = sqlite3_bind_null(s, i);
            break;
        case ValorSql::Entero:
            r = sqlite3_bind_int64(s, i, v.entero);
            break;
        case ValorSql::Real:
            r = sqlite3_bind_double(s, i, v.real);
            break;
        case ValorSql::Texto:
            r = sqlite3_bind_text(s, i, v.bytes.constData(), int(v.bytes.size()), SQLITE_TRANSIENT);
            break;
        case ValorSql::Bytes:
            r = sqlite3_bind_blob(s, i, v.bytes.constData(), int(v.bytes.size()), SQLITE_TRANSIENT);
            break;
        }
        if (r != SQLITE_OK)
            throw FalloEjecucion::servidor(mensaje(bd));
    }
}

bool cambiaEsquema(sqlite3_stmt* s)
{
    const QString sql = QString::fromUtf8(sqlite3_sql(s)).trimmed();
    for (const char* palabra : {"CREATE", "DROP", "ALTER"})
        if (sql.startsWith(QLatin1String(palabra), Qt::CaseInsensitive))
            return true;
    return false;
}

// Compiles the whole body before anything runs. The one exception is a body
// that builds a work table and then uses it: the statements after the CREATE
// compile only once it has run, so they are left for the run, from *resto on
// (the transaction still makes the call all or nothing). True in that case.
bool compilarCuerpo(sqlite3* bd, const Definicion& d, std::vector<Sentencia>& sentencias, int* resto)
{
    if (prepararTodas(bd, d.cuerpo, 0, sentencias, resto))
        return false;
    for (const auto& s : sentencias)
        if (cambiaEsquema(s.get()))
            return true;
    throw FalloEjecucion::servidor(mensaje(bd));
}

Resultados correrProcedimiento(sqlite3* bd, const Definicion& d, const std::vector<Parametro>& valores)
{
    const std::vector<ValorSql> enlazados = valoresDeLaLlamada(d, valores);
    std::vector<Sentencia> sentencias;
    int resto = 0;
    const bool porPasos = compilarCuerpo(bd, d, sentencias, &resto);
    for (const auto& s : sentencias)
        enlazar(bd, s.get(), d, enlazados);

    Resultados resultados;
    Transaccion transaccion(bd, porPasos || algunaEscribe(sentencias));
    for (const auto& s : sentencias)
        correr(bd, s.get(), resultados);
    if (porPasos) {
        const char* inicio = d.cuerpo.constData();
        const char* fin = inicio + d.cuerpo.size();
        for (const char* siguiente = inicio + resto; siguiente < fin;) {
            sqlite3_stmt* crudo = nullptr;
            if (sqlite3_prepare_v2(bd, siguiente, int(fin - siguiente), &crudo, &siguiente) != SQLITE_OK)
                throw FalloEjecucion::servidor(mensaje(bd));
            if (!crudo)
                continue;
            Sentencia s(crudo);
            enlazar(bd, s.get(), d, enlazados);
            correr(bd, s.get(), resultados);
        }
    }
    transaccion.confirmar();
    return resultados;
}

// Compiles a body without running it; every statement names declared parameters only.
void compilarProcedimiento(sqlite3* bd, const Definicion& d)
{
    std::vector<Sentencia> sentencias;
    int resto = 0;
    try {
        compilarCuerpo(bd, d, sentencias, &resto);
    } catch (const FalloEjecucion& f) {
        throw FalloEjecucion::servidor(QStringLiteral("Procedure '%1': %2").arg(d.nombre, f.texto()));
    }
    for (const auto& s : sentencias)
        for (int i = 1; i <= sqlite3_bind_parameter_count(s.get()); ++i)
            parametroDeclarado(s.get(), i, d);
}

// ---------------------------------------------------------------------------
// Raw statements: the T-SQL text of the client, already passed by the guard
// ---------------------------------------------------------------------------

using Guardia::Pieza;
using Guardia::reservada;
using Guardia::sintaxis;
using Guardia::trocear;

class Analizador {
public:
    Analizador(const QString& sql, const std::vector<Pieza>& piezas, size_t desde, size_t hasta)
        : sql_(sql), p_(piezas), i_(desde), fin_(hasta) {}

    bool alFinal() const { return i_ >= fin_; }
    const Pieza& actual() const
    {
        if (alFinal())
            throw sintaxis(fin_ > 0 ? p_[fin_ - 1].texto : QString());
        return p_[i_];
    }
    size_t posicion() const { return i_; }
    const Pieza& pieza(size_t k) const { return p_[k]; }

    const Pieza& tomar() { const Pieza& p = actual(); ++i_; return p; }
    void esperar(const char* palabra)
    {
        if (!actual().es(palabra))
            throw sintaxis(actual().texto);
        ++i_;
    }
    void esperarSimbolo(const char* s)
    {
        if (!actual().esSimbolo(s))
            throw sintaxis(actual().texto);
        ++i_;
    }
    bool aceptar(const char* palabra)
    {
        if (!alFinal() && p_[i_].es(palabra)) {
            ++i_;
            return true;
        }
        return false;
    }
    bool aceptarSimbolo(const char* s)
    {
        if (!alFinal() && p_[i_].esSimbolo(s)) {
            ++i_;
            return true;
        }
        return false;
    }
    const Pieza& nombre()
    {
        const Pieza& p = actual();
        if (p.clase != Pieza::Palabra || reservada(p) || p.texto.startsWith(QLatin1Char('@')))
            throw sintaxis(p.texto);
        ++i_;
        return p;
    }
    void terminar()
    {
        if (!alFinal())
            throw sintaxis(actual().texto);
    }

    // A condition or a value: names, literals, operators and parentheses.
    // A value stops at a ',' outside parentheses (the next assignment) or at WHERE.
    void expresion(bool esValor)
    {
        int abiertos = 0;
        size_t cuantas = 0;
        while (!alFinal()) {
            const Pieza& p = p_[i_];
            if (abiertos == 0 && esValor && (p.esSimbolo(",") || p.es("WHERE")))
                break;
            if (reservada(p) || p.texto.startsWith(QLatin1Char('@')) || p.texto.startsWith(QLatin1Char('#')))
                throw sintaxis(p.texto);
            if (p.clase == Pieza::Palabra) {
                const bool llamada = i_ + 1 < fin_ && p_[i_ + 1].esSimbolo("(");
                if (llamada && !p.es("IN"))
                    throw sintaxis(p.texto); // no function of the server is called here
            } else if (p.esSimbolo("(")) {
                ++abiertos;
            } else if (p.esSimbolo(")")) {
                if (--abiertos < 0)
                    throw sintaxis(p.texto);
            } else if (p.esSimbolo(",") && abiertos == 0) {
                throw sintaxis(p.texto);
            }
            ++i_;
            ++cuantas;
        }
        if (cuantas == 0 || abiertos != 0)
            throw sintaxis(alFinal() ? p_[fin_ - 1].texto : actual().texto);
    }

    // The text from the piece k to the end of this statement.
    QString textoDesde(size_t k) const
    {
        if (k >= fin_)
            return {};
        return sql_.mid(p_[k].inicio, p_[fin_ - 1].fin - p_[k].inicio);
    }

private:
    const QString& sql_;
    const std::vector<Pieza>& p_;
    size_t i_;
    size_t fin_;
};

// "SELECT FECHA=GETDATE()", "select [top N] * from t [where ...]".
QString adaptarConsulta(const QString& sql, const std::vector<Pieza>& piezas)
{
    Analizador a(sql, piezas, 0, piezas.size());
    const Pieza& select = a.tomar();
    if (!select.es("SELECT"))
        throw sintaxis(select.texto);
    // The server's clock under a column name.
    if (piezas.size() == 6 && piezas[1].clase == Pieza::Palabra && piezas[2].esSimbolo("=") && piezas[3].es("GETDATE")
        && piezas[4].esSimbolo("(") && piezas[5].esSimbolo(")") && !reservada(piezas[1]))
        return QStringLiteral("SELECT GETDATE() AS %1").arg(piezas[1].texto);
    QString limite;
    if (a.aceptar("TOP")) {
        const Pieza& n = a.tomar();
        if (n.clase != Pieza::Numero || n.texto.contains(QLatin1Char('.')))
            throw sintaxis(n.texto);
        limite = QString::number(n.texto.toLongLong());
    }
    const size_t columnas = a.posicion();
    if (!a.aceptarSimbolo("*")) {
        a.nombre();
        while (a.aceptarSimbolo(","))
            a.nombre();
    }
    a.esperar("FROM");
    a.nombre();
    if (a.aceptar("WHERE"))
        a.expresion(false);
    a.terminar();
    if (limite.isEmpty())
        return a.textoDesde(0);
    return select.texto + QLatin1Char(' ') + a.textoDesde(columnas) + QStringLiteral(" LIMIT ") + limite;
}

// The columns of a table of the file, in their order; none for an unknown table.
std::vector<ServidorEmbebido::ColumnaTabla> columnasDe(sqlite3* bd, const QString& tabla)
{
    std::vector<ServidorEmbebido::ColumnaTabla> columnas;
    sqlite3_stmt* crudo = nullptr;
    if (sqlite3_prepare_v2(bd, "SELECT name, type FROM pragma_table_info(?)", -1, &crudo, nullptr) != SQLITE_OK)
        throw FalloEjecucion::servidor(mensaje(bd));
    Sentencia s(crudo);
    const QByteArray nombre = tabla.toUtf8();
    sqlite3_bind_text(s.get(), 1, nombre.constData(), int(nombre.size()), SQLITE_TRANSIENT);
    while (sqlite3_step(s.get()) == SQLITE_ROW) {
        const QString tipo = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(s.get(), 1))).toUpper();
        columnas.push_back({QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(s.get(), 0))),
                            tipo == QLatin1String("INTEGER") || tipo == QLatin1String("REAL")});
    }
    return columnas;
}

// SQL Server takes an empty text as 0 in a number column ('' or blanks only);
// the strict tables of this server would refuse it. The consoles send one for
// the gains of a returned row, so such a value, standing alone as the value of
// a number column, is written as 0.
class CerosDeTexto {
public:
    CerosDeTexto(const QString& tabla, const ServidorEmbebido::EsquemaTablas& esquema)
    {
        if (esquema)
            columnas_ = esquema(tabla);
    }

    // The piece k is the whole value of the column (by name, or by position
    // when the statement names no columns).
    void valor(const Pieza& p, const QString& columna, int posicion)
    {
        if (!esVacio(p))
            return;
        for (int c = 0; c < int(columnas_.size()); ++c) {
            const bool es = columna.isEmpty() ? c == posicion
                                              : columnas_[c].nombre.compare(columna, Qt::CaseInsensitive) == 0;
            if (es && columnas_[c].numerica)
                reemplazar(p.inicio, p.fin, QStringLiteral("0"));
        }
    }

    static bool esVacio(const Pieza& p) { return p.clase == Pieza::Cadena && p.texto.trimmed().isEmpty(); }

    // The text [inicio, fin) of the statement is to be written as another.
    void reemplazar(qsizetype inicio, qsizetype fin, const QString& texto) { rangos_.push_back({inicio, fin, texto}); }

    // The text of the statement with those values written anew.
    QString aplicar(const QString& texto, qsizetype base) const
    {
        QString r = texto;
        for (auto k = rangos_.size(); k-- > 0;)
            r.replace(rangos_[k].inicio - base, rangos_[k].fin - rangos_[k].inicio, rangos_[k].texto);
        return r;
    }

private:
    struct Rango {
        qsizetype inicio, fin;
        QString texto;
    };
    std::vector<ServidorEmbebido::ColumnaTabla> columnas_;
    std::vector<Rango> rangos_;
};

// A new transaction whose date and sequence another client took meanwhile
// (two operators enter on one date; each screen took its number when it
// prepared) is stored under the next free sequence of that date instead: the
// sequence given becomes an expression that the statement evaluates when it
// runs, inside the write transaction of the batch, so that no other client
// can take the same number in between.
QString secuenciaLibre(const QString& fecha, const QString& secuencia)
{
    return QStringLiteral("CASE WHEN EXISTS (SELECT 1 FROM MOVIMIENTOS WHERE FECHA = %1 AND SECUENCIA = %2)"
                          " THEN (SELECT max(SECUENCIA) + 1 FROM MOVIMIENTOS WHERE FECHA = %1) ELSE %2 END")
        .arg(fecha, secuencia);
}

// One INSERT, UPDATE or delete of a batch, the pieces [desde, hasta).
QString adaptarCambio(const QString& sql, const std::vector<Pieza>& piezas, size_t desde, size_t hasta,
                      const ServidorEmbebido::EsquemaTablas& esquema)
{
    Analizador a(sql, piezas, desde, hasta);
    const Pieza& verbo = a.tomar();
    if (verbo.es("INSERT")) {
        // INSERT INTO t [(columns)] VALUES (literal, ...)
        a.esperar("INTO");
        const QString tabla = a.nombre().texto;
        CerosDeTexto ceros(tabla, esquema);
        QStringList columnas;
        if (a.aceptarSimbolo("(")) {
            do
                columnas << a.nombre().texto;
            while (a.aceptarSimbolo(","));
            a.esperarSimbolo(")");
        }
        a.esperar("VALUES");
        a.esperarSimbolo("(");
        // The transactions' key: the date and the sequence, the first two values.
        const bool movimiento = columnas.isEmpty() && tabla.compare(QLatin1String("MOVIMIENTOS"), Qt::CaseInsensitive) == 0;
        QString fecha;
        int posicion = 0;
        do {
            const size_t primera = a.posicion();
            if (a.aceptarSimbolo("-") || a.aceptarSimbolo("+")) {
                if (a.actual().clase != Pieza::Numero)
                    throw sintaxis(a.actual().texto);
                a.tomar();
            } else if (a.actual().clase == Pieza::Numero || a.actual().clase == Pieza::Cadena || a.actual().es("NULL")) {
                const Pieza& p = a.tomar();
                const bool clave = movimiento && posicion <= 1; // written below
                if (!clave && columnas.isEmpty())
                    ceros.valor(p, QString(), posicion);
                else if (!clave && posicion < columnas.size())
                    ceros.valor(p, columnas[posicion], posicion);
            } else {
                throw sintaxis(a.actual().texto);
            }
            const Pieza& desdeValor = a.pieza(primera);
            const Pieza& hastaValor = a.pieza(a.posicion() - 1);
            const QString valor = CerosDeTexto::esVacio(desdeValor)
                ? QStringLiteral("0")
                : sql.mid(desdeValor.inicio, hastaValor.fin - desdeValor.inicio);
            if (movimiento && posicion == 0)
                fecha = sql.mid(desdeValor.inicio, hastaValor.fin - desdeValor.inicio);
            else if (movimiento && posicion == 1)
                ceros.reemplazar(desdeValor.inicio, hastaValor.fin, secuenciaLibre(fecha, valor));
            ++posicion;
        } while (a.aceptarSimbolo(","));
        a.esperarSimbolo(")");
        a.terminar();
        return ceros.aplicar(a.textoDesde(desde), piezas[desde].inicio);
    }
    if (verbo.es("UPDATE")) {
        // UPDATE t SET column = value, ... WHERE condition
        CerosDeTexto ceros(a.nombre().texto, esquema);
        a.esperar("SET");
        do {
            const QString columna = a.nombre().texto;
            a.esperarSimbolo("=");
            const size_t valor = a.posicion();
            a.expresion(true);
            if (a.posicion() == valor + 1)
                ceros.valor(a.pieza(valor), columna, -1);
        } while (a.aceptarSimbolo(","));
        a.esperar("WHERE");
        a.expresion(false);
        a.terminar();
        return ceros.aplicar(a.textoDesde(desde), piezas[desde].inicio);
    }
    if (verbo.es("DELETE")) {
        // delete [from] t where condition: T-SQL may leave out the "from"
        const bool conFrom = a.aceptar("FROM");
        const size_t tabla = a.posicion();
        a.nombre();
        a.esperar("WHERE");
        a.expresion(false);
        a.terminar();
        if (conFrom)
            return a.textoDesde(desde);
        return verbo.texto + QStringLiteral(" from ") + a.textoDesde(tabla);
    }
    throw sintaxis(verbo.texto);
}

} // namespace

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
            if (sqlite3_prepare_v2(bd, "INSERT OR REPLACE INTO fotos (cliente, img) VALUES (?, ?)", -1, &crudo, nullptr) != SQLITE_OK)
                throw FalloEjecucion::servidor(mensaje(bd));
            Sentencia foto(crudo);
            for (const auto& [cliente, ruta] : {std::pair{0, "fotos/sin_foto.png"}, std::pair{9999, "fotos/revision.png"}}) {
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
    sqlite3* bd = conexion();
    return correrProcedimiento(bd, *definicion(nombre), valores);
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
    return correrProcedimiento(bd, leerDefinicion(nombre, texto), valores);
}

QStringList ServidorEmbebido::adaptar(const QString& sql, bool esConsulta, const EsquemaTablas& esquema)
{
    const std::vector<Pieza> piezas = trocear(sql);
    if (piezas.empty())
        throw sintaxis(sql.trimmed());
    if (esConsulta)
        return {adaptarConsulta(sql, piezas)};
    // A batch: the statements stand one behind the other with no separator, so
    // each INSERT, UPDATE or DELETE outside quotes starts the next one.
    QStringList sentencias;
    size_t desde = 0;
    for (size_t k = 1; k <= piezas.size(); ++k) {
        if (k == piezas.size() || piezas[k].es("INSERT") || piezas[k].es("UPDATE") || piezas[k].es("DELETE")) {
            sentencias << adaptarCambio(sql, piezas, desde, k, esquema);
            desde = k;
        }
    }
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
    Resultados resultados;
    correr(bd, sentencias.front().get(), resultados);
    return resultados;
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
                           -1, &crudo, nullptr)
        != SQLITE_OK)
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
    Resultados nada;
    Transaccion transaccion(bd, true);
    comprobarVersiones(bd, esperadas);
    for (const auto& s : sentencias)
        correr(bd, s.get(), nada);
    transaccion.confirmar();
}
