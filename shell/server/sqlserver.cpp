// The production server: Microsoft SQL Server reached through Qt's QODBC driver,
// the unixODBC driver manager and the FreeTDS driver.
//
// Every result is read to the end before the call returns (the client works on
// fully fetched sets), one set per statement that returns columns; the row
// counts of statements without columns never become sets.
#include "sqlserver.h"
#include "fallo.h"
#include "guardia.h"
#include "lector_tsql.h"

#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QMutex>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QSqlResult>
#include <QStringList>

#include <algorithm>
#include <atomic>
#include <cmath>

// The ODBC headers come after Qt's: they define short macro names of their own.
#include <sql.h>
#include <sqlext.h>

namespace {

// A procedure or a raw statement may take this long on the server before the
// call fails: a server that stops answering after the login must not hold the
// program forever.
constexpr SQLULEN segundosDeLimite = 60;

// The driver manager's own entry points, taken from the library that the QODBC
// plugin already has loaded, so that this library needs no link to it.
struct Odbc {
    using AsignarHandle = SQLRETURN (*)(SQLSMALLINT, SQLHANDLE, SQLHANDLE*);
    using LiberarHandle = SQLRETURN (*)(SQLSMALLINT, SQLHANDLE);
    using AtributoEntorno = SQLRETURN (*)(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER);
    using AtributoSentencia = SQLRETURN (*)(SQLHSTMT, SQLINTEGER, SQLPOINTER, SQLINTEGER);
    using Controladores = SQLRETURN (*)(SQLHENV, SQLUSMALLINT, SQLCHAR*, SQLSMALLINT, SQLSMALLINT*, SQLCHAR*, SQLSMALLINT,
                                        SQLSMALLINT*);
    using LeerDato = SQLRETURN (*)(SQLHSTMT, SQLUSMALLINT, SQLSMALLINT, SQLPOINTER, SQLLEN, SQLLEN*);

    AsignarHandle asignar = nullptr;
    LiberarHandle liberar = nullptr;
    AtributoEntorno atributoEntorno = nullptr;
    AtributoSentencia atributoSentencia = nullptr;
    Controladores controladores = nullptr;
    LeerDato leerDato = nullptr;

    static const Odbc& instancia()
    {
        static const Odbc odbc = [] {
            Odbc o;
            QLibrary biblioteca(QStringLiteral("odbc"), 2);
            if (!biblioteca.load())
                return o;
            o.asignar = reinterpret_cast<AsignarHandle>(biblioteca.resolve("SQLAllocHandle"));
            o.liberar = reinterpret_cast<LiberarHandle>(biblioteca.resolve("SQLFreeHandle"));
            o.atributoEntorno = reinterpret_cast<AtributoEntorno>(biblioteca.resolve("SQLSetEnvAttr"));
            o.atributoSentencia = reinterpret_cast<AtributoSentencia>(biblioteca.resolve("SQLSetStmtAttr"));
            o.controladores = reinterpret_cast<Controladores>(biblioteca.resolve("SQLDrivers"));
            o.leerDato = reinterpret_cast<LeerDato>(biblioteca.resolve("SQLGetData"));
            return o; // the library stays loaded: QLibrary does not unload on destruction
        }();
        return odbc;
    }
};

// True when unixODBC knows a driver by this name (its odbcinst.ini entry).
bool controladorRegistrado(const QString& nombre)
{
    const Odbc& odbc = Odbc::instancia();
    if (!odbc.asignar || !odbc.liberar || !odbc.atributoEntorno || !odbc.controladores)
        return false;
    SQLHANDLE entorno = SQL_NULL_HANDLE;
    if (!SQL_SUCCEEDED(odbc.asignar(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &entorno)))
        return false;
    odbc.atributoEntorno(entorno, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    bool hallado = false;
    SQLCHAR descripcion[256];
    SQLCHAR atributos[1024];
    SQLSMALLINT largoDescripcion = 0;
    SQLSMALLINT largoAtributos = 0;
    SQLUSMALLINT direccion = SQL_FETCH_FIRST;
    while (!hallado && SQL_SUCCEEDED(odbc.controladores(entorno, direccion, descripcion, sizeof descripcion, &largoDescripcion,
                                                        atributos, sizeof atributos, &largoAtributos))) {
        hallado = QString::fromLocal8Bit(reinterpret_cast<const char*>(descripcion)).compare(nombre, Qt::CaseInsensitive) == 0;
        direccion = SQL_FETCH_NEXT;
    }
    odbc.liberar(SQL_HANDLE_ENV, entorno);
    return hallado;
}

// The driver as the connection text names it: the registered "FreeTDS" entry,
// or, on a machine where the package did not register it, the driver library
// itself, which unixODBC also accepts.
QString controladorFreeTds()
{
    static const QString controlador = [] {
        const QString nombre = QStringLiteral("FreeTDS");
        if (controladorRegistrado(nombre))
            return nombre;
        for (const char* carpeta : {"/usr/lib/x86_64-linux-gnu/odbc", "/usr/lib/aarch64-linux-gnu/odbc", "/usr/lib64",
                                    "/usr/lib/odbc", "/usr/local/lib", "/usr/lib"}) {
            const QFileInfo biblioteca(QDir(QString::fromLatin1(carpeta)), QStringLiteral("libtdsodbc.so"));
            if (biblioteca.exists())
                return biblioteca.absoluteFilePath();
        }
        return nombre; // nothing found: the driver manager's failure will name it
    }();
    return controlador;
}

// A value of the connection text in braces, which keep ';', '=' and spaces
// inside it. The value goes in as it stands: FreeTDS ends a braced value at the
// first '}' followed by ';' and does not undo a doubled '}', so doubling would
// change the value (a password "a}b" would reach the server as "a}}b").
QString entreLlaves(const QString& valor) { return QLatin1Char('{') + valor + QLatin1Char('}'); }

// Braces only where the value needs them, so that plain values read plainly.
QString valorOdbc(const QString& valor)
{
    static const QString especiales = QStringLiteral(";{}=");
    const bool necesita = valor != valor.trimmed() ||
                          std::any_of(valor.begin(), valor.end(), [](QChar c) { return especiales.contains(c); });
    return necesita ? entreLlaves(valor) : valor;
}

// The server's own words: the diagnostic text of the driver, or Qt's text when
// the driver said nothing.
QString textoDe(const QSqlError& error)
{
    const QString servidor = error.databaseText().trimmed();
    return servidor.isEmpty() ? error.text().trimmed() : servidor;
}

QVariant aVariant(const Valor& v)
{
    if (v.esEntero())
        return QVariant(v.aTexto().toLongLong());
    if (v.esReal())
        return QVariant(v.aDouble());
    if (v.esTexto())
        return QVariant(v.aTexto());
    if (v.esBytes())
        return QVariant(v.aBytes());
    return QVariant(v.aFechaHora());
}

Valor aValor(const QVariant& v)
{
    if (!v.isValid() || v.isNull())
        return {};
    switch (v.typeId()) {
    case QMetaType::Bool:
        return Valor(int64_t(v.toBool() ? -1 : 0)); // true is -1, as the client compares it
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
        return Valor(int64_t(v.toLongLong()));
    case QMetaType::ULongLong:
        return Valor(int64_t(v.toULongLong()));
    case QMetaType::Float:
        return Valor(double(v.toFloat()));
    case QMetaType::Double:
        return Valor(v.toDouble());
    case QMetaType::QString:
        return Valor(v.toString());
    case QMetaType::QByteArray:
        return Valor(v.toByteArray());
    case QMetaType::QDateTime:
        return Valor(v.toDateTime());
    case QMetaType::QDate:
        return Valor(QDateTime(v.toDate(), QTime(0, 0)));
    case QMetaType::QTime:
        // An hour alone stands on the day zero of the original platform.
        return Valor(QDateTime(QDate(1899, 12, 30), v.toTime()));
    default:
        return Valor(v.toString());
    }
}

// The statement's ODBC handle, once it is prepared.
SQLHSTMT sentenciaDe(const QSqlQuery& consulta)
{
    const QVariant handle = consulta.result()->handle();
    if (handle.isValid() && handle.metaType().sizeOf() == int(sizeof(SQLHSTMT)))
        return *static_cast<const SQLHSTMT*>(handle.constData());
    return nullptr;
}

// A text column of the current row, read in UTF-16 pieces until the driver
// has given it all. Qt's own reading takes the driver's text as UTF-8 in a
// buffer of the column's declared length, and drops the value when the
// driver cannot tell its length ahead: an accented text near its column's
// length (a note of 500 characters with some ñ) would come back empty, and
// the console's next save of the row would write it so.
Valor leerTexto(SQLHSTMT sentencia, int columna)
{
    const Odbc& odbc = Odbc::instancia();
    QString texto;
    SQLWCHAR trozo[2048];
    for (;;) {
        SQLLEN largo = 0;
        const SQLRETURN r = odbc.leerDato(sentencia, SQLUSMALLINT(columna + 1), SQL_C_WCHAR, trozo, sizeof trozo, &largo);
        if (r == SQL_NO_DATA)
            break;
        if (!SQL_SUCCEEDED(r))
            throw FalloEjecucion::servidor(QStringLiteral("No se ha podido leer la columna %1 del resultado.").arg(columna + 1));
        if (largo == SQL_NULL_DATA)
            return texto.isEmpty() ? Valor() : Valor(texto);
        // A piece that filled the buffer holds all but the final zero; the last one, its length.
        const qsizetype unidades = (largo == SQL_NO_TOTAL || largo >= SQLLEN(sizeof trozo))
                                       ? qsizetype(std::size(trozo) - 1)
                                       : qsizetype(largo / SQLLEN(sizeof(SQLWCHAR)));
        static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));
        texto += QString::fromUtf16(reinterpret_cast<const char16_t*>(trozo), unidades);
        if (r == SQL_SUCCESS)
            break;
    }
    return Valor(texto);
}

// Reads every set that the statement left, in order, to the end.
Resultados leerConjuntos(QSqlQuery& consulta)
{
    Resultados conjuntos;
    do {
        if (!consulta.isSelect())
            continue; // a row count or a statement without columns
        ConjuntoResultados conjunto;
        const QSqlRecord registro = consulta.record();
        const int columnas = registro.count();
        std::vector<bool> esTexto(size_t(columnas), false);
        const SQLHSTMT sentencia = Odbc::instancia().leerDato ? sentenciaDe(consulta) : nullptr;
        for (int i = 0; i < columnas; ++i) {
            conjunto.columnas << registro.fieldName(i);
            esTexto[size_t(i)] = sentencia && registro.field(i).metaType().id() == QMetaType::QString;
        }
        while (consulta.next()) {
            std::vector<Valor> fila;
            fila.reserve(size_t(columnas));
            // Columns are read in their order: a text column read here is
            // then passed over by Qt's reading of a later one.
            for (int i = 0; i < columnas; ++i)
                fila.push_back(esTexto[size_t(i)] ? leerTexto(sentencia, i) : aValor(consulta.value(i)));
            conjunto.filas.push_back(std::move(fila));
        }
        // A failure in the middle of the rows (a conversion, a lost link) ends the read.
        if (consulta.lastError().isValid())
            throw FalloEjecucion::servidor(textoDe(consulta.lastError()));
        conjuntos.push_back(std::move(conjunto));
    } while (consulta.nextResult());
    // An error that the server raised after an earlier set ends the chain of sets.
    if (consulta.lastError().isValid())
        throw FalloEjecucion::servidor(textoDe(consulta.lastError()));
    return conjuntos;
}

// The statement exists once prepared: it gets the time limit of every call.
void darLimite(QSqlQuery& consulta)
{
    const Odbc& odbc = Odbc::instancia();
    if (const SQLHSTMT sentencia = sentenciaDe(consulta); odbc.atributoSentencia && sentencia)
        odbc.atributoSentencia(sentencia, SQL_ATTR_QUERY_TIMEOUT, reinterpret_cast<SQLPOINTER>(segundosDeLimite),
                               SQL_IS_UINTEGER);
}

std::atomic<int> conexiones {0};

} // namespace

ServidorSqlServer::ServidorSqlServer(DatosSqlServer datos)
    : datos_(std::move(datos)), nombreConexion_(QStringLiteral("sqlserver-%1").arg(++conexiones))
{
}

ServidorSqlServer::~ServidorSqlServer() { cerrar(); }

QString ServidorSqlServer::textoOdbc(const DatosSqlServer& datos)
{
    return QStringLiteral("DRIVER=%1;SERVER=%2;PORT=%3;DATABASE=%4;UID=%5;PWD=%6;TDS_Version=7.4;ClientCharset=UTF-8")
        .arg(entreLlaves(controladorFreeTds()), valorOdbc(datos.servidor), QString::number(datos.puerto), valorOdbc(datos.base),
             valorOdbc(datos.usuario), entreLlaves(datos.clave));
}

void ServidorSqlServer::abrir()
{
    cerrar();
    // The one text that no braced value can carry (see entreLlaves).
    if (datos_.clave.contains(QStringLiteral("};")))
        throw FalloEjecucion::conexion(QStringLiteral("La contraseña no se puede pasar al controlador ODBC: contiene \"};\"."));
    QString fallo;
    {
        QSqlDatabase base = QSqlDatabase::addDatabase(QStringLiteral("QODBC"), nombreConexion_);
        if (!base.isValid()) {
            fallo = textoDe(base.lastError());
        } else {
            base.setDatabaseName(textoOdbc(datos_));
            // The login time-out: without one a dead server holds the start forever.
            const int segundos = std::max(1, datos_.segundosConexion);
            base.setConnectOptions(QStringLiteral("SQL_ATTR_ODBC_VERSION=SQL_OV_ODBC3;SQL_ATTR_LOGIN_TIMEOUT=%1;"
                                                  "SQL_ATTR_CONNECTION_TIMEOUT=%1")
                                       .arg(segundos));
            if (!base.open())
                fallo = textoDe(base.lastError());
        }
        if (fallo.isNull() && !base.isOpen())
            fallo = QStringLiteral("No se ha podido abrir la conexión.");
    }
    if (!fallo.isNull()) {
        cerrar();
        throw FalloEjecucion::conexion(fallo.isEmpty() ? QStringLiteral("No se ha podido abrir la conexión.") : fallo);
    }
}

void ServidorSqlServer::cerrar()
{
    if (!QSqlDatabase::contains(nombreConexion_))
        return;
    {
        QSqlDatabase base = QSqlDatabase::database(nombreConexion_, false);
        base.close();
    }
    QSqlDatabase::removeDatabase(nombreConexion_);
}

bool ServidorSqlServer::abierto() const
{
    return QSqlDatabase::contains(nombreConexion_) && QSqlDatabase::database(nombreConexion_, false).isOpen();
}

Resultados ServidorSqlServer::procedimiento(const QString& nombre, const std::vector<Parametro>& valores)
{
    if (!abierto())
        throw FalloEjecucion::objetoCerrado();

    // Values after the last one set are not sent: the server's defaults cover them.
    size_t enviados = valores.size();
    while (enviados > 0 && !valores[enviados - 1].has_value())
        --enviados;

    // One marker per value sent. An unset value between set ones takes the
    // procedure's default by keyword; a null goes as the literal, which every
    // parameter type accepts (a bound null would carry a type of its own).
    QStringList marcas;
    std::vector<QVariant> enlazados;
    for (size_t i = 0; i < enviados; ++i) {
        if (!valores[i].has_value()) {
            marcas << QStringLiteral("DEFAULT");
        } else if (valores[i]->esNulo()) {
            marcas << QStringLiteral("NULL");
        } else {
            marcas << QStringLiteral("?");
            enlazados.push_back(aVariant(*valores[i]));
        }
    }
    const QString llamada = marcas.isEmpty() ? QStringLiteral("{call %1}").arg(nombre)
                                             : QStringLiteral("{call %1(%2)}").arg(nombre, marcas.join(QLatin1Char(',')));

    QSqlQuery consulta(QSqlDatabase::database(nombreConexion_, false));
    consulta.setForwardOnly(true);
    consulta.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
    if (!consulta.prepare(llamada))
        throw FalloEjecucion::servidor(textoDe(consulta.lastError()));

    darLimite(consulta);

    for (const QVariant& v : enlazados)
        consulta.addBindValue(v);
    if (!consulta.exec())
        throw FalloEjecucion::servidor(textoDe(consulta.lastError()));
    return leerConjuntos(consulta);
}

Resultados ServidorSqlServer::abrirConsulta(const QString& sql)
{
    Guardia::consulta(sql); // refused on this machine, whether the server answers or not
    if (!abierto())
        throw FalloEjecucion::objetoCerrado();
    return correrTexto(sql);
}

void ServidorSqlServer::comprobarVersiones(const VersionesEsperadas& esperadas)
{
    // The rows are read with update locks held to the end of the batch's
    // transaction: no other client changes one between this reading and the
    // batch. A row that is gone has changed; a row without a version row is
    // version 0. The keys go in a few at a time, so that no statement grows
    // without end.
    constexpr size_t kPorLectura = 200;
    QHash<quint64, qint64> actuales;
    const auto clave = [](const QString& fecha, qint64 secuencia) {
        return (quint64(fecha.toUInt()) << 32) | quint32(secuencia);
    };
    for (size_t desde = 0; desde < esperadas.size(); desde += kPorLectura) {
        QStringList condiciones;
        for (size_t k = desde; k < std::min(esperadas.size(), desde + kPorLectura); ++k) {
            const VersionEsperada& e = esperadas[k];
            // The date goes into the text: only the digits of a yyyymmdd may.
            if (e.fecha.size() != 8 ||
                !std::all_of(e.fecha.begin(), e.fecha.end(), [](QChar c) { return c.isDigit() && c.unicode() < 128; }))
                throw LectorTsql::sintaxis(e.fecha);
            condiciones << QStringLiteral("(m.FECHA = '%1' AND m.SECUENCIA = %2)").arg(e.fecha).arg(e.secuencia);
        }
        const Resultados r = correrTexto(
            QStringLiteral(
                "SELECT m.FECHA, m.SECUENCIA, COALESCE(v.version, 0) FROM dbo.MOVIMIENTOS AS m WITH (UPDLOCK, HOLDLOCK)"
                " LEFT JOIN dbo.MOVIMIENTOS_VERSION AS v WITH (UPDLOCK, HOLDLOCK)"
                " ON v.FECHA = m.FECHA AND v.SECUENCIA = m.SECUENCIA WHERE %1")
                .arg(condiciones.join(QStringLiteral(" OR "))));
        if (!r.empty())
            for (const auto& fila : r.front().filas)
                actuales.insert(clave(fila[0].aTexto(), qint64(fila[1].aDouble())), qint64(std::llround(fila[2].aDouble())));
    }
    std::vector<std::pair<QString, int>> cambiadas;
    for (const VersionEsperada& e : esperadas) {
        const auto it = actuales.constFind(clave(e.fecha, e.secuencia));
        if (it == actuales.constEnd() || *it != e.version)
            cambiadas.emplace_back(e.fecha, e.secuencia);
    }
    if (!cambiadas.empty())
        throw FalloFilasCambiadas(std::move(cambiadas));
}

void ServidorSqlServer::ejecutar(const QString& sql, int sentencias, const VersionesEsperadas& esperadas)
{
    Guardia::cambios(sql, sentencias);
    if (!abierto())
        throw FalloEjecucion::objetoCerrado();
    // A batch is all or nothing, as on the embedded server: a statement that
    // fails (a text too long, the time limit) takes back the ones before it,
    // and a save that failed on the time limit is not written afterwards,
    // when the row it waited for comes free.
    // The sets of a batch are read and dropped, so that an error raised by a
    // later statement of the batch still comes up.
    QSqlDatabase base = QSqlDatabase::database(nombreConexion_, false);
    if (!base.transaction())
        throw FalloEjecucion::servidor(textoDe(base.lastError()));
    try {
        comprobarVersiones(esperadas); // nothing written on a row that changed meanwhile
        correrTexto(sql);              // its statement is closed before the transaction ends
    } catch (const FalloEjecucion&) {
        base.rollback();
        throw;
    }
    if (!base.commit()) {
        const QString fallo = textoDe(base.lastError());
        base.rollback(); // also puts the connection back to one transaction per statement
        throw FalloEjecucion::servidor(fallo);
    }
}

Resultados ServidorSqlServer::correrTexto(const QString& sql)
{
    QSqlQuery consulta(QSqlDatabase::database(nombreConexion_, false));
    consulta.setForwardOnly(true);
    consulta.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
    // Prepared so that the statement takes its time limit before it runs. The
    // guard lets no ':' or '?' stand outside quotes, so nothing of the text is
    // taken for a placeholder.
    if (!consulta.prepare(sql))
        throw FalloEjecucion::servidor(textoDe(consulta.lastError()));
    darLimite(consulta);
    if (!consulta.exec())
        throw FalloEjecucion::servidor(textoDe(consulta.lastError()));
    return leerConjuntos(consulta);
}
