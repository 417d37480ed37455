#include "tsql.h"
#include "sqlserver.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sqlite3.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

std::unique_ptr<ServidorTsql> elServidor;
QString elMotivo;
bool intentado = false;

const QString kAdmin = QStringLiteral("babelfish_user");
const QString kClaveAdmin = QStringLiteral("BabelfishPass1");

// A loopback port that nothing holds at this moment.
quint16 puertoLibre()
{
    const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in dir {};
    dir.sin_family = AF_INET;
    dir.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t largo = sizeof dir;
    quint16 puerto = 0;
    if (fd >= 0 && ::bind(fd, reinterpret_cast<sockaddr*>(&dir), sizeof dir) == 0 &&
        ::getsockname(fd, reinterpret_cast<sockaddr*>(&dir), &largo) == 0)
        puerto = ntohs(dir.sin_port);
    if (fd >= 0)
        ::close(fd);
    return puerto;
}

// The batches of the deployment script, split on its "go" lines as sqlcmd and tsql do.
QStringList lotes()
{
    QFile f(QStringLiteral(DESPLIEGUE_SQL));
    f.open(QIODevice::ReadOnly);
    static const QRegularExpression go(QStringLiteral("^\\s*go\\s*$"),
                                       QRegularExpression::CaseInsensitiveOption | QRegularExpression::MultilineOption);
    return QString::fromUtf8(f.readAll()).split(go);
}

Valor deVariant(const QVariant& v)
{
    const int tipo = v.typeId();
    if (!v.isValid() || v.isNull())
        return {};
    if (tipo == QMetaType::Bool)
        return Valor(int64_t(v.toBool() ? -1 : 0));
    if (QList<int> {QMetaType::Int, QMetaType::UInt, QMetaType::Short, QMetaType::UShort, QMetaType::LongLong,
                    QMetaType::ULongLong, QMetaType::Long, QMetaType::ULong}
            .contains(tipo))
        return Valor(int64_t(v.toLongLong()));
    if (tipo == QMetaType::Double || tipo == QMetaType::Float)
        return Valor(v.toDouble());
    if (tipo == QMetaType::QByteArray)
        return Valor(v.toByteArray());
    return tipo == QMetaType::QDateTime ? Valor(v.toDateTime()) : Valor(v.toString());
}

// One value of a row of the embedded file.
Valor deSqlite(sqlite3_stmt* st, int i)
{
    switch (sqlite3_column_type(st, i)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return Valor(int64_t(sqlite3_column_int64(st, i)));
    case SQLITE_FLOAT:
        return Valor(sqlite3_column_double(st, i));
    case SQLITE_BLOB:
        return Valor(QByteArray(static_cast<const char*>(sqlite3_column_blob(st, i)), sqlite3_column_bytes(st, i)));
    default:
        return Valor(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, i))));
    }
}

// A value of the embedded file as a literal of T-SQL, for a column of the given type.
QString literal(const Valor& v, const QString& tipo)
{
    if (v.esNulo())
        return QStringLiteral("NULL");
    if (v.esEntero())
        return v.aTexto();
    if (v.esReal())
        return QString::number(v.aDouble(), 'g', 17);
    if (v.esBytes())
        return QStringLiteral("0x") + QString::fromLatin1(v.aBytes().toHex());
    QString t = v.aTexto();
    if (tipo == QLatin1String("datetime")) {
        // Moments are kept as yyyy-mm-dd hh:mm:ss or dd/mm/yyyy hh:mm:ss text.
        QDateTime m = QDateTime::fromString(t, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        if (!m.isValid())
            m = QDateTime::fromString(t, QStringLiteral("dd/MM/yyyy HH:mm:ss"));
        return m.isValid() ? m.toString(QStringLiteral("''yyyy-MM-ddTHH:mm:ss''")) : QStringLiteral("'1900-01-01T00:00:00'");
    }
    return QStringLiteral("N'") + t.replace(QLatin1Char('\''), QStringLiteral("''")) + QLatin1Char('\'');
}

} // namespace

const std::vector<std::pair<QString, QString>>& ServidorTsql::tablas()
{
    // clang-format off
    static const std::vector<std::pair<QString, QString>> todas = {
        {"MOVIMIENTOS", "FECHA, SECUENCIA"}, {"bancos", "C_Banco"}, {"bancos_zelle", "C_Banco"}, {"clientes", "C_CLIENTE"},
        {"fotos", "cliente"}, {"proveedor", "C_proveedor"}, {"conceptos", "C_CONCEPTO"}, {"servicios", "C_SERVIcio"},
        {"servicios_usdt", "C_SERVIcio"}, {"parametros", "Clave"}, {"dolar", "valor"}, {"dolar_NEW", "TRUMIN"},
        {"notificaciones", "Fecha, Codigo_proveedor, titulo"}};
    // clang-format on
    return todas;
}

ServidorTsql* ServidorTsql::instancia()
{
    if (!intentado) {
        intentado = true;
        std::unique_ptr<ServidorTsql> s(new ServidorTsql);
        QString fallo;
        if (s->arrancar(fallo))
            elServidor = std::move(s);
        else
            elMotivo = fallo;
    }
    return elServidor.get();
}

QString ServidorTsql::motivo() { return elMotivo; }

bool ServidorTsql::omitido() { return !QFile::exists(QStringLiteral(SERVIDOR_TSQL)); }

void ServidorTsql::terminar() { elServidor.reset(); }

QString ServidorTsql::claveTrumin() { return QStringLiteral("Cl4ve;de{TRUMIN}"); }

bool ServidorTsql::arrancar(QString& fallo)
{
    QElapsedTimer reloj;
    reloj.start();
    const QString herramienta = QStringLiteral(SERVIDOR_TSQL);
    if (!QFile::exists(herramienta)) {
        fallo = QStringLiteral("no test T-SQL server at %1").arg(herramienta);
        return false;
    }
    // The server runs as an unprivileged user when started by root: it must reach the folder.
    QFile::setPermissions(dir_.path(), QFile::permissions(dir_.path()) | QFile::ReadOther | QFile::ExeOther | QFile::ReadGroup |
                                           QFile::ExeGroup);
    carpetaDatos_ = dir_.filePath(QStringLiteral("datos"));
    puerto_ = puertoLibre();
    quint16 puertoPg = puertoLibre();
    while (puertoPg == puerto_)
        puertoPg = puertoLibre();
    QProcess arranque;
    QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
    entorno.insert(QStringLiteral("BABELFISH_COLLATION"), QStringLiteral("Modern_Spanish_CI_AS"));
    entorno.insert(QStringLiteral("BABELFISH_PG_PORT"), QString::number(puertoPg));
    arranque.setProcessEnvironment(entorno);
    arranque.setProcessChannelMode(QProcess::MergedChannels);
    arranque.start(herramienta, {QStringLiteral("start"), carpetaDatos_, QString::number(puerto_)});
    if (!arranque.waitForFinished(600000) || arranque.exitCode() != 0) {
        fallo = QStringLiteral("the T-SQL server did not start: ") + QString::fromLocal8Bit(arranque.readAll());
        qCritical("%s", qPrintable(fallo));
        return false;
    }

    DatosSqlServer d;
    d.servidor = QStringLiteral("127.0.0.1");
    d.puerto = puerto_;
    d.base = QStringLiteral("master");
    d.usuario = kAdmin;
    d.clave = kClaveAdmin;
    conexionAdmin_ = QStringLiteral("tsql-admin");
    {
        QSqlDatabase bd = QSqlDatabase::addDatabase(QStringLiteral("QODBC"), conexionAdmin_);
        bd.setDatabaseName(ServidorSqlServer::textoOdbc(d));
        if (!bd.open()) {
            fallo = QStringLiteral("no administrator's connection: ") + bd.lastError().text();
            qCritical("%s", qPrintable(fallo));
            return false;
        }
    }
    // The login first, so that the deployment gives its user the rights.
    QString error = admin(QStringLiteral("CREATE LOGIN TRUMIN WITH PASSWORD = '%1'")
                              .arg(claveTrumin().replace(QLatin1Char('\''), QStringLiteral("''"))));
    QStringList fallos = desplegar();
    if (!error.isEmpty())
        fallos.prepend(error);
    if (!fallos.isEmpty()) {
        fallo = QStringLiteral("the deployment failed: ") + fallos.join(QLatin1Char('\n'));
        qCritical("%s", qPrintable(fallo));
        return false;
    }
    gemelo_ = std::make_unique<BaseTemporal>(true);
    copiarDe(gemelo_->archivo());
    segundos_ = double(reloj.elapsed()) / 1000;
    return true;
}

ServidorTsql::~ServidorTsql()
{
    if (!conexionAdmin_.isEmpty()) {
        QSqlDatabase::database(conexionAdmin_, false).close();
        QSqlDatabase::removeDatabase(conexionAdmin_);
    }
    if (!carpetaDatos_.isEmpty())
        QProcess::execute(QStringLiteral(SERVIDOR_TSQL), {QStringLiteral("stop"), carpetaDatos_});
}

QString ServidorTsql::cadenaTrumin() const
{
    return QStringLiteral("Provider=sqlserver;Server=127.0.0.1,%1;Database=RAMIL;User=TRUMIN;Password={%2};Timeout=10")
        .arg(QString::number(puerto_), claveTrumin());
}

std::unique_ptr<Servidor> ServidorTsql::sqlServer() const
{
    auto s = crearServidor(cadenaTrumin());
    s->abrir();
    return s;
}

std::unique_ptr<Servidor> ServidorTsql::embebido() const
{
    auto s = crearServidor(gemelo_->cadenaConexion());
    s->abrir();
    return s;
}

QString ServidorTsql::admin(const QString& sql) const
{
    QSqlQuery q(QSqlDatabase::database(conexionAdmin_, false));
    q.setForwardOnly(true);
    if (!q.exec(sql))
        return q.lastError().text();
    while (q.nextResult()) {}
    return q.lastError().isValid() ? q.lastError().text() : QString();
}

QList<QStringList> ServidorTsql::filas(const QString& sql) const
{
    QList<QStringList> r;
    QSqlQuery q(QSqlDatabase::database(conexionAdmin_, false));
    q.setForwardOnly(true);
    if (!q.exec(sql)) {
        qWarning("%s: %s", qPrintable(sql), qPrintable(q.lastError().text()));
        return r;
    }
    while (q.next()) {
        QStringList fila;
        for (int i = 0; i < q.record().count(); ++i)
            fila << comparable(deVariant(q.value(i)));
        r << fila;
    }
    return r;
}

QStringList ServidorTsql::desplegar() const
{
    QStringList fallos;
    const QStringList todos = lotes();
    for (qsizetype i = 0; i < todos.size(); ++i) {
        if (todos[i].trimmed().isEmpty())
            continue;
        const QString error = admin(todos[i]);
        if (!error.isEmpty())
            fallos << QStringLiteral("batch %1: %2").arg(i + 1).arg(error);
    }
    admin(QStringLiteral("USE RAMIL"));
    return fallos;
}

void ServidorTsql::copiarDe(const QString& archivo) const
{
    sqlite3* bd = nullptr;
    sqlite3_open_v2(archivo.toUtf8().constData(), &bd, SQLITE_OPEN_READONLY, nullptr);
    admin(QStringLiteral("USE RAMIL"));
    for (const auto& par : tablas()) {
        const QString& tabla = par.first;
        QHash<QString, QString> tipos;
        for (const QStringList& c : filas(QStringLiteral("SELECT COLUMN_NAME, DATA_TYPE FROM INFORMATION_SCHEMA.COLUMNS "
                                                         "WHERE TABLE_NAME = '%1'")
                                              .arg(tabla)))
            tipos.insert(c[0].toLower(), c[1].toLower());
        const QString error = admin(QStringLiteral("DELETE FROM dbo.%1").arg(tabla));
        if (!error.isEmpty())
            qFatal("%s", qPrintable(error));
        sqlite3_stmt* st = nullptr;
        sqlite3_prepare_v2(bd, QStringLiteral("SELECT * FROM %1").arg(tabla).toUtf8().constData(), -1, &st, nullptr);
        QStringList columnas;
        for (int i = 0; i < sqlite3_column_count(st); ++i)
            columnas << QString::fromUtf8(sqlite3_column_name(st, i));
        const QString cabeza = QStringLiteral("INSERT INTO dbo.%1 (%2) VALUES ").arg(tabla, columnas.join(QLatin1Char(',')));
        QStringList filasSql;
        const auto enviar = [&] {
            if (filasSql.isEmpty())
                return;
            const QString e = admin(cabeza + filasSql.join(QLatin1Char(',')));
            if (!e.isEmpty())
                qFatal("copy of %s: %s", qPrintable(tabla), qPrintable(e));
            filasSql.clear();
        };
        while (sqlite3_step(st) == SQLITE_ROW) {
            QStringList valores;
            for (int i = 0; i < columnas.size(); ++i)
                valores << literal(deSqlite(st, i), tipos.value(columnas[i].toLower()));
            filasSql << QLatin1Char('(') + valores.join(QLatin1Char(',')) + QLatin1Char(')');
            if (filasSql.size() == 500)
                enviar();
        }
        enviar();
        sqlite3_finalize(st);
    }
    sqlite3_close(bd);
}

QStringList ServidorTsql::tablaSqlServer(const QString& tabla, const QString& orden) const
{
    QStringList r;
    for (const QStringList& f : filas(QStringLiteral("SELECT * FROM dbo.%1 ORDER BY %2").arg(tabla, orden)))
        r << f.join(QLatin1Char('|'));
    return r;
}

QStringList ServidorTsql::tablaEmbebida(const QString& archivo, const QString& tabla, const QString& orden)
{
    QStringList r;
    sqlite3* bd = nullptr;
    sqlite3_open_v2(archivo.toUtf8().constData(), &bd, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(bd, QStringLiteral("SELECT * FROM %1 ORDER BY %2").arg(tabla, orden).toUtf8().constData(), -1, &st,
                       nullptr);
    while (sqlite3_step(st) == SQLITE_ROW) {
        QStringList fila;
        for (int i = 0; i < sqlite3_column_count(st); ++i)
            fila << comparable(deSqlite(st, i));
        r << fila.join(QLatin1Char('|'));
    }
    sqlite3_finalize(st);
    sqlite3_close(bd);
    return r;
}

QString comparable(const Valor& v)
{
    if (v.esNulo())
        return QStringLiteral("(nulo)");
    if (v.esEntero() || v.esReal())
        return QString::number(v.aDouble(), 'g', 12);
    if (v.esBytes())
        return QStringLiteral("(%1 bytes %2)")
            .arg(v.aBytes().size())
            .arg(QString::fromLatin1(QCryptographicHash::hash(v.aBytes(), QCryptographicHash::Sha1).toHex().left(12)));
    if (v.esFechaHora())
        return v.aTexto();
    // A moment kept as text in the embedded file reads as the datetime of SQL Server.
    const QString t = v.aTexto();
    if (t.size() >= 19 && t[4] == QLatin1Char('-') && t[10] == QLatin1Char(' ')) {
        const QDateTime m = QDateTime::fromString(t.left(19), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        if (m.isValid())
            return m.toString(QStringLiteral("dd/MM/yyyy HH:mm:ss"));
    }
    return t;
}

// Two values read alike. Moments that each server's clock stamped (the last
// store of the rates, the clock itself) may part by a few seconds.
static bool iguales(const QString& x, const QString& y)
{
    if (x == y)
        return true;
    const QString forma = QStringLiteral("dd/MM/yyyy HH:mm:ss");
    const QDateTime a = QDateTime::fromString(x, forma), b = QDateTime::fromString(y, forma);
    return a.isValid() && b.isValid() && std::abs(a.secsTo(b)) <= 5;
}

QStringList diferencias(const Resultados& e, const Resultados& s)
{
    QStringList r;
    if (e.size() != s.size())
        r << QStringLiteral("%1 sets embedded, %2 on SQL Server").arg(e.size()).arg(s.size());
    for (size_t c = 0; c < std::min(e.size(), s.size()); ++c) {
        const ConjuntoResultados &a = e[c], &b = s[c];
        const QString conjunto = QStringLiteral("set %1: ").arg(c + 1);
        if (a.columnas.join(QLatin1Char(',')).compare(b.columnas.join(QLatin1Char(',')), Qt::CaseInsensitive) != 0)
            r << conjunto + QStringLiteral("columns [%1] embedded, [%2] on SQL Server")
                                .arg(a.columnas.join(QLatin1Char(',')), b.columnas.join(QLatin1Char(',')));
        if (a.filas.size() != b.filas.size())
            r << conjunto + QStringLiteral("%1 rows embedded, %2 on SQL Server").arg(a.filas.size()).arg(b.filas.size());
        // Each server numbers the versions of its rows with a counter of its own.
        const qsizetype version = a.columnas.indexOf(QStringLiteral("version_fila"));
        int vistas = 0;
        for (size_t f = 0; f < std::min(a.filas.size(), b.filas.size()) && vistas < 3; ++f) {
            QStringList x, y;
            for (const Valor& v : a.filas[f])
                x << comparable(v);
            for (const Valor& v : b.filas[f])
                y << comparable(v);
            if (version >= 0 && version < x.size() && version < y.size())
                x[version] = y[version] = QStringLiteral("(version)");
            bool igual = x.size() == y.size();
            for (qsizetype i = 0; igual && i < x.size(); ++i)
                igual = iguales(x[i], y[i]);
            if (!igual) {
                r << conjunto + QStringLiteral("row %1 [%2] embedded, [%3] on SQL Server")
                                    .arg(f + 1)
                                    .arg(x.join(QLatin1Char('|')), y.join(QLatin1Char('|')));
                ++vistas;
            }
        }
    }
    return r;
}
