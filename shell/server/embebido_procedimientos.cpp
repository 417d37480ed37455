// The embedded server's procedures: their files, parameters and calls.
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

namespace embebido {

// ---------------------------------------------------------------------------
// Procedures: the files of the database folder
// ---------------------------------------------------------------------------

// A value ready to bind, in the storage class of its parameter.
struct ValorSql {
    enum Clase { Nulo, Entero, Real, Texto, Bytes } clase = Nulo;
    int64_t entero = 0;
    double real = 0;
    QByteArray bytes;
};

FalloEjecucion falloDeArchivo(const QString& procedimiento, const QString& linea)
{
    return FalloEjecucion::servidor(
        QStringLiteral("Procedure '%1': cannot read the parameter line \"%2\".").arg(procedimiento, linea));
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
        if (!linea.trimmed().startsWith(QLatin1String("--@")))
            continue;
        // Fragments are in place by now: a line of another kind, an include
        // mistyped, would leave its filter out without a word.
        if (!linea.trimmed().startsWith(QLatin1String("--@param")))
            throw FalloEjecucion::servidor(
                QStringLiteral("Procedure '%1': cannot read the line \"%2\".").arg(nombre, linea.trimmed()));
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
    QByteArray texto;
    try {
        texto = RecursosBd::procedimiento(archivo.value());
    } catch (const std::runtime_error& e) { // a fragment missing or misused
        throw FalloEjecucion::servidor(QStringLiteral("Procedure '%1': %2").arg(archivo.value(), QString::fromUtf8(e.what())));
    }
    auto d = std::make_shared<const Definicion>(leerDefinicion(archivo.value(), texto));
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
                throw FalloEjecucion::servidor(
                    QStringLiteral("The conversion of the varchar value '%1' overflowed an int column.").arg(original));
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
            throw FalloEjecucion::servidor(
                QStringLiteral("Implicit conversion from data type datetime to float is not allowed."));
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
            throw FalloEjecucion::servidor(
                QStringLiteral("Implicit conversion from data type datetime to varbinary(max) is not allowed."));
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
        throw FalloEjecucion::servidor(
            QStringLiteral("Procedure or function '%1' has too many arguments specified.").arg(d.nombre));
    std::vector<ValorSql> r;
    r.reserve(d.parametros.size());
    for (size_t i = 0; i < d.parametros.size(); ++i) {
        const auto& p = d.parametros[i];
        if (i < dados && valores[i])
            r.push_back(convertir(*valores[i], p.tipo));
        else if (p.tieneDefecto)
            r.push_back(convertir(p.defecto, p.tipo));
        else
            throw FalloEjecucion::servidor(
                QStringLiteral("Procedure or function '%1' expects parameter '%2', which was not supplied.")
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

void correrProcedimiento(sqlite3* bd, const Definicion& d, const std::vector<Parametro>& valores, Receptor& receptor)
{
    const std::vector<ValorSql> enlazados = valoresDeLaLlamada(d, valores);
    std::vector<Sentencia> sentencias;
    int resto = 0;
    const bool porPasos = compilarCuerpo(bd, d, sentencias, &resto);
    for (const auto& s : sentencias)
        enlazar(bd, s.get(), d, enlazados);

    Transaccion transaccion(bd, porPasos || algunaEscribe(sentencias));
    for (const auto& s : sentencias)
        correr(bd, s.get(), receptor);
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
            correr(bd, s.get(), receptor);
        }
    }
    transaccion.confirmar();
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

} // namespace embebido
