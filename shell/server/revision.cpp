#include "revision.h"
#include "fallo.h"
#include "pliegue.h"
#include "recursos_bd.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QStringList>

#include <sqlite3.h>
#include <memory>

namespace Revision {

namespace {

struct Cierra {
    void operator()(sqlite3* bd) const { sqlite3_close_v2(bd); }
};
using Base = std::unique_ptr<sqlite3, Cierra>;

Base abrir(const QString& archivo, int modo)
{
    sqlite3* bd = nullptr;
    const int rc = sqlite3_open_v2(QFile::encodeName(archivo).constData(), &bd, modo, nullptr);
    Base b(bd);
    if (rc != SQLITE_OK)
        throw FalloEjecucion::conexion(QStringLiteral("%1 (%2)").arg(
            bd ? QString::fromUtf8(sqlite3_errmsg(bd)) : QString::fromUtf8(sqlite3_errstr(rc)), archivo));
    sqlite3_busy_timeout(bd, 10000); // other client processes may be writing
    return b;
}

void ejecutar(sqlite3* bd, const QByteArray& sql)
{
    char* error = nullptr;
    if (sqlite3_exec(bd, sql.constData(), nullptr, nullptr, &error) != SQLITE_OK) {
        const QString texto = QString::fromUtf8(error ? error : sqlite3_errmsg(bd));
        sqlite3_free(error);
        throw FalloEjecucion::servidor(texto);
    }
}

// The rows of a query, each as its columns' texts.
QList<QStringList> filas(sqlite3* bd, const QByteArray& sql)
{
    sqlite3_stmt* s = nullptr;
    if (sqlite3_prepare_v2(bd, sql.constData(), -1, &s, nullptr) != SQLITE_OK)
        throw FalloEjecucion::servidor(QString::fromUtf8(sqlite3_errmsg(bd)));
    QList<QStringList> r;
    int rc;
    while ((rc = sqlite3_step(s)) == SQLITE_ROW) {
        QStringList fila;
        for (int c = 0; c < sqlite3_column_count(s); ++c)
            fila << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(s, c)));
        r << fila;
    }
    sqlite3_finalize(s);
    if (rc != SQLITE_DONE)
        throw FalloEjecucion::servidor(QString::fromUtf8(sqlite3_errmsg(bd)));
    return r;
}

// The objects of a schema by kind and name: their CREATE text and their table.
struct Objeto {
    QString tipo, nombre, tabla, sql;
};
QList<Objeto> objetos(sqlite3* bd)
{
    QList<Objeto> r;
    for (const QStringList& f : filas(bd, "SELECT type, name, tbl_name, sql FROM sqlite_schema "
                                          "WHERE sql IS NOT NULL AND name NOT LIKE 'sqlite_%' ORDER BY rowid"))
        r << Objeto {f[0], f[1], f[2], f[3]};
    return r;
}

QString citado(const QString& nombre)
{
    return QLatin1Char('"') + QString(nombre).replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"');
}

QStringList columnas(sqlite3* bd, const QString& tabla)
{
    QStringList r;
    for (const QStringList& f : filas(bd, QStringLiteral("SELECT name FROM pragma_table_info(%1)").arg(citado(tabla)).toUtf8()))
        r << f[0];
    return r;
}

// The statements of a script, each without the comments that stand before it.
QList<QByteArray> sentencias(const QByteArray& guion)
{
    QList<QByteArray> r;
    qsizetype inicio = 0;
    for (qsizetype fin = guion.indexOf(';'); fin >= 0; fin = guion.indexOf(';', fin + 1)) {
        const QByteArray trozo = guion.mid(inicio, fin + 1 - inicio);
        if (!sqlite3_complete(trozo.constData()))
            continue; // the ';' stands inside a trigger's body, a text or a comment
        QByteArrayList lineas = trozo.split('\n');
        while (!lineas.isEmpty() && (lineas.first().trimmed().isEmpty() || lineas.first().trimmed().startsWith("--")))
            lineas.removeFirst();
        r << lineas.join('\n').trimmed();
        inicio = fin + 1;
    }
    return r;
}

} // namespace

int Version_Programa()
{
    static const int version = [] {
        const QRegularExpression e(QStringLiteral("PRAGMA\\s+user_version\\s*=\\s*(\\d+)"),
                                   QRegularExpression::CaseInsensitiveOption);
        return e.match(QString::fromUtf8(RecursosBd::leer(QStringLiteral("esquema.sql")))).captured(1).toInt();
    }();
    return version;
}

int Version_De(const QString& archivo)
{
    try {
        Base bd = abrir(archivo, SQLITE_OPEN_READONLY);
        return filas(bd.get(), "PRAGMA user_version").value(0).value(0, QStringLiteral("-1")).toInt();
    } catch (const FalloEjecucion&) {
        return -1;
    }
}

void Actualizar(const QString& archivo)
{
    // Today's schema, made in memory from the script a new database is made from.
    Base nueva = abrir(QStringLiteral(":memory:"), SQLITE_OPEN_READWRITE);
    Registra_Pliega(nueva.get());
    Registra_Espanol(nueva.get());
    ejecutar(nueva.get(), RecursosBd::leer(QStringLiteral("esquema.sql")));
    const QList<Objeto> hoy = objetos(nueva.get());

    Base bd = abrir(archivo, SQLITE_OPEN_READWRITE);
    // The collations and functions that today's indexes may name.
    Registra_Pliega(bd.get());
    Registra_Espanol(bd.get());
    // A table renamed aside keeps the triggers and views of the others as they read.
    ejecutar(bd.get(), "PRAGMA legacy_alter_table=ON");
    ejecutar(bd.get(), "BEGIN IMMEDIATE");
    try {
        // Read again under the write lock: another client may have done it meanwhile.
        const int version = filas(bd.get(), "PRAGMA user_version").value(0).value(0).toInt();
        if (version >= Version_Programa()) {
            ejecutar(bd.get(), "ROLLBACK");
            return;
        }
        QHash<QString, Objeto> tenia;
        for (const Objeto& o : objetos(bd.get()))
            tenia.insert(o.tipo + QLatin1Char(':') + o.nombre.toLower(), o);

        // Tables: made when missing, made anew with every row when their text differs.
        for (const Objeto& t : hoy) {
            if (t.tipo != QLatin1String("table"))
                continue;
            const auto antes = tenia.constFind(QStringLiteral("table:") + t.nombre.toLower());
            if (antes == tenia.constEnd()) {
                ejecutar(bd.get(), t.sql.toUtf8());
                continue;
            }
            if (antes->sql == t.sql)
                continue;
            const QString aparte = t.nombre + QStringLiteral("_anterior");
            ejecutar(bd.get(), QStringLiteral("ALTER TABLE %1 RENAME TO %2").arg(citado(antes->nombre), citado(aparte)).toUtf8());
            ejecutar(bd.get(), t.sql.toUtf8());
            const QStringList viejas = columnas(bd.get(), aparte);
            QStringList comunes;
            for (const QString& c : columnas(bd.get(), t.nombre))
                if (viejas.contains(c, Qt::CaseInsensitive))
                    comunes << citado(c);
            ejecutar(bd.get(), QStringLiteral("INSERT INTO %1 (%2) SELECT %2 FROM %3")
                                   .arg(citado(t.nombre), comunes.join(QLatin1Char(',')), citado(aparte))
                                   .toUtf8());
            ejecutar(bd.get(), QStringLiteral("DROP TABLE %1").arg(citado(aparte)).toUtf8());
        }

        // Indexes and triggers: what is not today's goes, what is missing is made.
        QHash<QString, QString> deHoy;
        for (const Objeto& o : hoy)
            deHoy.insert(o.tipo + QLatin1Char(':') + o.nombre.toLower(), o.sql);
        for (const Objeto& o : objetos(bd.get())) {
            if (o.tipo != QLatin1String("index") && o.tipo != QLatin1String("trigger"))
                continue;
            if (deHoy.value(o.tipo + QLatin1Char(':') + o.nombre.toLower()) != o.sql)
                ejecutar(bd.get(), QStringLiteral("DROP %1 %2").arg(o.tipo.toUpper(), citado(o.nombre)).toUtf8());
        }
        QHash<QString, QString> queda;
        for (const Objeto& o : objetos(bd.get()))
            queda.insert(o.tipo + QLatin1Char(':') + o.nombre.toLower(), o.sql);
        for (const Objeto& o : hoy)
            if (o.tipo != QLatin1String("table") && !queda.contains(o.tipo + QLatin1Char(':') + o.nombre.toLower()))
                ejecutar(bd.get(), o.sql.toUtf8());

        // The rows every database needs (the schema writes them so that they
        // are added only where missing).
        for (const QByteArray& sentencia : sentencias(RecursosBd::leer(QStringLiteral("esquema.sql"))))
            if (sentencia.startsWith("INSERT"))
                ejecutar(bd.get(), sentencia);
        ejecutar(bd.get(), QStringLiteral("PRAGMA user_version = %1").arg(Version_Programa()).toUtf8());
        ejecutar(bd.get(), "COMMIT");
    } catch (...) {
        sqlite3_exec(bd.get(), "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

QString Danos(const QString& archivo, bool rapida)
{
    QFile f(archivo);
    if (!f.open(QIODevice::ReadOnly))
        return QStringLiteral("no se puede leer el archivo (%1)").arg(f.errorString());
    const QByteArray cabecera = f.read(100);
    f.close();
    if (cabecera.isEmpty())
        return QStringLiteral("el archivo está vacío");
    if (cabecera.size() < 100 || !cabecera.startsWith(QByteArrayLiteral("SQLite format 3\0")))
        return QStringLiteral("el archivo no es una base de datos");
    try {
        Base bd = abrir(archivo, SQLITE_OPEN_READONLY);
        const QList<QStringList> revision = filas(bd.get(), rapida ? "PRAGMA quick_check(1)" : "PRAGMA integrity_check(1)");
        if (revision.value(0).value(0) != QLatin1String("ok"))
            return QStringLiteral("la revisión de integridad encontró daños (%1)").arg(revision.value(0).value(0));
        for (const char* tabla : {"MOVIMIENTOS", "parametros", "clientes", "proveedor", "servicios"})
            if (filas(bd.get(), QByteArray("SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = '") + tabla + "'")
                    .isEmpty())
                return QStringLiteral("le falta la tabla %1").arg(QLatin1String(tabla));
    } catch (const FalloEjecucion& fallo) {
        return fallo.texto();
    }
    return {};
}

bool Archivo_Movido(sqlite3* bd)
{
    int movido = 0;
    // The engine compares the file it holds open with what stands at its path now.
    if (sqlite3_file_control(bd, "main", SQLITE_FCNTL_HAS_MOVED, &movido) != SQLITE_OK)
        return false;
    return movido != 0;
}

} // namespace Revision
