// The two servers are one contract: the embedded definitions and the SQL Server
// deployment script, read as text, declare the same procedures (parameters,
// defaults, result columns) and the same tables (columns, types, lengths).
#include "lector_tsql.h"
#include "prueba.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

namespace {

using Ficha = LectorTsql::Pieza;
using Fichas = LectorTsql::Piezas;

// Words, numbers, quoted texts and symbols; comments dropped; [name] and
// "name" are words; N'text' is a text.
Fichas fichas(const QString& sql) { return LectorTsql::trocear(sql, LectorTsql::Modo::Definicion); }

// The position of the ')' that closes the '(' at k.
size_t cierre(const Fichas& f, size_t k)
{
    int nivel = 0;
    for (size_t i = k; i < f.size(); ++i) {
        if (f[i].esSimbolo("("))
            ++nivel;
        else if (f[i].esSimbolo(")") && --nivel == 0)
            return i;
    }
    return f.size();
}

// Splits [desde, hasta) at the commas outside parentheses.
std::vector<std::pair<size_t, size_t>> porComas(const Fichas& f, size_t desde, size_t hasta)
{
    std::vector<std::pair<size_t, size_t>> r;
    int nivel = 0;
    size_t inicio = desde;
    for (size_t i = desde; i < hasta; ++i) {
        if (f[i].esSimbolo("("))
            ++nivel;
        else if (f[i].esSimbolo(")"))
            --nivel;
        else if (nivel == 0 && f[i].esSimbolo(",")) {
            r.push_back({inicio, i});
            inicio = i + 1;
        }
    }
    if (inicio < hasta)
        r.push_back({inicio, hasta});
    return r;
}

// A default as a comparable text: NULL, a number, or a quoted text.
QString valorDe(const Fichas& f, size_t desde, size_t hasta)
{
    QString r;
    for (size_t i = desde; i < hasta; ++i) {
        if (f[i].clase == Ficha::Cadena)
            r += QLatin1Char('\'') + f[i].texto + QLatin1Char('\'');
        else
            r += f[i].texto.toUpper();
    }
    bool numero = false;
    const double d = r.toDouble(&numero);
    return numero ? QString::number(d) : r;
}

struct Parametro {
    QString nombre, tipo, defecto; // defecto empty when there is none
};
struct Procedimiento {
    std::vector<Parametro> parametros;
    std::vector<QStringList> conjuntos; // result columns of each SELECT that returns rows
};
struct Columna {
    QString nombre, tipo;
    int largo = 0;   // text: characters; 0 for unlimited
    bool nulo;       // takes NULL
    QString defecto; // the DEFAULT as a comparable text; empty when there is none
};
struct Contrato {
    QMap<QString, Procedimiento> procedimientos; // by name in lower case
    QMap<QString, std::vector<Columna>> tablas;
    QMap<QString, QString> nombres; // lower case -> as written
    QStringList sinLeer;            // statements that change a table after its CREATE
};

// The kind of a declared type, so that the two dialects compare.
QString familia(const QString& tipo)
{
    const QString t = tipo.toLower();
    if (QStringList{"integer", "int", "smallint", "tinyint", "bigint", "bit"}.contains(t))
        return QStringLiteral("entero");
    if (QStringList{"real", "float", "decimal", "numeric", "money", "smallmoney"}.contains(t))
        return QStringLiteral("real");
    if (QStringList{"text", "varchar", "nvarchar", "char", "nchar"}.contains(t))
        return QStringLiteral("texto");
    // moments are 'yyyy-mm-dd hh:mm:ss' text on the embedded server
    if (QStringList{"datetime", "date", "smalldatetime", "datetime2"}.contains(t))
        return QStringLiteral("momento");
    if (QStringList{"blob", "varbinary", "image"}.contains(t))
        return QStringLiteral("bytes");
    return t;
}

bool compatibles(const QString& a, const QString& b)
{
    const QString x = familia(a), y = familia(b);
    const auto textoOMomento = [](const QString& f) { return f == QLatin1String("texto") || f == QLatin1String("momento"); };
    return x == y || (textoOMomento(x) && textoOMomento(y));
}

// The names of the result columns of a select list: the alias after AS, the
// T-SQL "name = value", or the column itself ("t.col" gives "col").
QStringList columnasDe(const Fichas& f, size_t desde, size_t hasta)
{
    QStringList r;
    for (const auto& [a, b] : porComas(f, desde, hasta)) {
        QString nombre = QStringLiteral("?");
        int nivel = 0;
        for (size_t i = a; i < b; ++i) {
            if (f[i].esSimbolo("("))
                ++nivel;
            else if (f[i].esSimbolo(")"))
                --nivel;
            else if (nivel == 0 && f[i].es("AS") && i + 1 < b)
                nombre = f[i + 1].texto;
        }
        if (nombre == QLatin1String("?")) {
            if (b - a >= 2 && f[a].clase == Ficha::Palabra && f[a + 1].esSimbolo("="))
                nombre = f[a].texto;
            else if (f[b - 1].clase == Ficha::Palabra || f[b - 1].esSimbolo("*"))
                nombre = f[b - 1].texto;
        }
        r << nombre;
    }
    return r;
}

// The SELECT statements of a body that return rows to the caller, each as
// its list of columns: a SELECT outside parentheses that does not assign
// variables, does not feed an INSERT or a CREATE, does not continue a UNION
// and does not write INTO a table.
std::vector<QStringList> conjuntosDe(const Fichas& f, size_t desde, size_t hasta)
{
    static const char* const limites[] = {"BEGIN", "END", "ELSE", "SET", "IF", "DECLARE", "RETURN", "WITH", "THEN",
                                          "COMMIT", "ROLLBACK", "EXEC", "EXECUTE", "PRINT", "WHILE"};
    static const char* const finLista[] = {"FROM", "INTO", "WHERE", "GROUP", "ORDER", "HAVING", "UNION", "EXCEPT",
                                           "INTERSECT", "END", "ELSE", "IF", "SELECT", "INSERT", "UPDATE", "DELETE",
                                           "SET", "DECLARE", "RETURN", "BEGIN", "COMMIT"};
    std::vector<QStringList> r;
    int nivel = 0;
    std::vector<int> niveles(f.size(), 0);
    for (size_t i = desde; i < hasta; ++i) {
        if (f[i].esSimbolo("("))
            ++nivel;
        niveles[i] = nivel;
        if (f[i].esSimbolo(")"))
            --nivel;
    }
    for (size_t i = desde; i < hasta; ++i) {
        if (!f[i].es("SELECT") || niveles[i] != 0)
            continue;
        // what stands before it in its statement
        bool devuelve = true;
        for (size_t k = i; k-- > desde;) {
            if (niveles[k] != 0 || f[k].esSimbolo(")"))
                continue;
            const Ficha& p = f[k];
            if (p.esSimbolo(";"))
                break;
            if (p.es("INSERT") || p.es("CREATE") || p.es("UNION") || p.es("EXCEPT") || p.es("INTERSECT") || p.es("ALL")) {
                devuelve = false;
                break;
            }
            bool limite = false;
            for (const char* w : limites)
                limite = limite || p.es(w);
            if (limite)
                break;
        }
        size_t k = i + 1;
        while (k < hasta && (f[k].es("DISTINCT") || f[k].es("ALL")))
            ++k;
        if (k < hasta && f[k].es("TOP"))
            k = (k + 1 < hasta && f[k + 1].esSimbolo("(")) ? cierre(f, k + 1) + 1 : k + 2;
        if (k + 1 < hasta && f[k].texto.startsWith(QLatin1Char('@')) && f[k + 1].esSimbolo("="))
            devuelve = false; // SELECT @variable = ...
        size_t fin = k;
        int casos = 0; // CASE ... END inside the list
        for (; fin < hasta; ++fin) {
            if (niveles[fin] != 0 || f[fin].esSimbolo(")"))
                continue;
            if (f[fin].es("CASE")) {
                ++casos;
                continue;
            }
            if (casos > 0) {
                if (f[fin].es("END"))
                    --casos;
                continue;
            }
            if (f[fin].esSimbolo(";"))
                break;
            bool termina = false;
            for (const char* w : finLista)
                termina = termina || f[fin].es(w);
            if (termina)
                break;
        }
        if (fin < hasta && f[fin].es("INTO") && niveles[fin] == 0)
            devuelve = false; // SELECT ... INTO a table
        if (devuelve)
            r.push_back(columnasDe(f, k, fin));
    }
    return r;
}

// One column definition [a, b) of a CREATE TABLE: its name, type, whether it
// takes NULL and its default (outer parentheses dropped); the length is the
// dialect's own and is read by the caller.
Columna columna(const Fichas& f, size_t a, size_t b)
{
    Columna c{f[a].texto, a + 1 < b ? f[a + 1].texto : QString(), 0, true, QString()};
    for (size_t j = a + 2; j < b; ++j) {
        if ((f[j].es("NOT") && j + 1 < b && f[j + 1].es("NULL")) || f[j].es("PRIMARY"))
            c.nulo = false;
        if (!f[j].es("DEFAULT"))
            continue;
        size_t desde = j + 1, hasta = desde;
        if (hasta < b && f[hasta].esSimbolo("("))
            hasta = cierre(f, hasta) + 1;
        else
            for (; hasta < b && !f[hasta].es("NOT") && !f[hasta].es("NULL") && !f[hasta].es("CHECK")
                   && !f[hasta].es("PRIMARY") && !f[hasta].es("CONSTRAINT") && !f[hasta].es("REFERENCES");)
                hasta = f[hasta].esSimbolo("(") ? cierre(f, hasta) + 1 : hasta + 1;
        while (hasta - desde >= 2 && f[desde].esSimbolo("(") && cierre(f, desde) + 1 == hasta) {
            ++desde;
            --hasta;
        }
        c.defecto = valorDe(f, desde, hasta);
    }
    return c;
}

// The columns of the CREATE TABLE whose name is at k, its length read by the
// dialect's own `largo`; constraints of the table are stepped over. Gives the
// position of the closing parenthesis.
template <class Largo>
size_t tabla(const Fichas& f, size_t k, Contrato& c, Largo largo)
{
    const QString nombre = f[k].texto;
    const size_t abre = k + 1, cierra = cierre(f, abre);
    std::vector<Columna> columnas;
    for (const auto& [a, b] : porComas(f, abre + 1, cierra)) {
        if (f[a].es("PRIMARY") || f[a].es("UNIQUE") || f[a].es("CONSTRAINT") || f[a].es("FOREIGN") || f[a].es("CHECK"))
            continue;
        Columna col = columna(f, a, b);
        largo(col, a, b);
        columnas.push_back(col);
    }
    c.tablas.insert(nombre.toLower(), columnas);
    c.nombres.insert(nombre.toLower(), nombre);
    return cierra;
}

// A table changed after its CREATE is not followed by this reading.
void alteraciones(const Fichas& f, Contrato& c)
{
    for (size_t i = 0; i + 2 < f.size(); ++i)
        if ((f[i].es("ALTER") && f[i + 1].es("TABLE")) || f[i].es("sp_rename"))
            c.sinLeer << QStringLiteral("%1 %2").arg(f[i].texto, f[i + 1].texto);
}

QString leer(const QString& ruta)
{
    QFile archivo(ruta);
    if (!archivo.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(archivo.readAll());
}

// The embedded side: one file per procedure with its "--@param" lines, and the
// schema, where "CHECK (length(name) <= N)" gives a text column its length.
Contrato embebido(const QMap<QString, QString>& archivos, const QString& esquema)
{
    Contrato c;
    static const QRegularExpression param(QStringLiteral(R"(^\s*--@param\s+(@\w+)\s+(\w+)\s*(?:=\s*(.*?))?\s*(?:--.*)?$)"));
    for (auto it = archivos.begin(); it != archivos.end(); ++it) {
        Procedimiento p;
        for (const QString& linea : it.value().split(QLatin1Char('\n'))) {
            const auto m = param.match(linea);
            if (!m.hasMatch())
                continue;
            const Fichas d = fichas(m.captured(3));
            p.parametros.push_back({m.captured(1), m.captured(2), d.empty() ? QString() : valorDe(d, 0, d.size())});
        }
        const Fichas f = fichas(it.value());
        p.conjuntos = conjuntosDe(f, 0, f.size());
        c.procedimientos.insert(it.key().toLower(), p);
        c.nombres.insert(it.key().toLower(), it.key());
    }
    const Fichas f = fichas(esquema);
    alteraciones(f, c);
    for (size_t i = 0; i + 2 < f.size(); ++i) {
        if (!f[i].es("CREATE") || !f[i + 1].es("TABLE"))
            continue;
        size_t k = i + 2;
        if (f[k].es("IF"))
            k += 3; // IF NOT EXISTS
        i = tabla(f, k, c, [&f](Columna& col, size_t a, size_t b) {
            for (size_t j = a; j + 6 < b; ++j)
                if (f[j].es("length") && f[j + 1].esSimbolo("(") && f[j + 3].esSimbolo(")") && f[j + 4].esSimbolo("<="))
                    col.largo = f[j + 5].texto.toInt();
        });
    }
    return c;
}

// The SQL Server side: the deployment script, batch by batch.
Contrato sqlServer(const QString& script)
{
    Contrato c;
    static const QRegularExpression go(QStringLiteral(R"(^\s*go\s*(?:--.*)?$)"),
                                       QRegularExpression::CaseInsensitiveOption | QRegularExpression::MultilineOption);
    for (const QString& lote : script.split(go)) {
        const Fichas f = fichas(lote);
        alteraciones(f, c);
        for (size_t i = 0; i + 2 < f.size(); ++i) {
            if (f[i].es("CREATE") && f[i + 1].es("TABLE")) {
                size_t k = i + 2;
                if (k + 2 < f.size() && f[k + 1].esSimbolo("."))
                    k += 2; // dbo.
                i = tabla(f, k, c, [&f](Columna& col, size_t a, size_t b) {
                    if (familia(col.tipo) != QLatin1String("texto"))
                        return;
                    if (a + 3 < b && f[a + 2].esSimbolo("("))
                        col.largo = f[a + 3].es("max") ? 0 : f[a + 3].texto.toInt();
                    else
                        col.largo = 1; // varchar without a length is one character
                });
                continue;
            }
            size_t k = i;
            if (!f[k].es("CREATE") && !f[k].es("ALTER"))
                continue;
            ++k;
            if (f[k].es("OR") && k + 1 < f.size() && f[k + 1].es("ALTER"))
                k += 2;
            if (!f[k].es("PROCEDURE") && !f[k].es("PROC"))
                continue;
            ++k;
            if (k + 2 < f.size() && f[k + 1].esSimbolo("."))
                k += 2;
            const QString nombre = f[k].texto;
            // the parameters run to the AS that opens the body
            size_t as = k + 1;
            while (as < f.size() && !f[as].es("AS"))
                as = f[as].esSimbolo("(") ? cierre(f, as) + 1 : as + 1;
            size_t desde = k + 1, hasta = as;
            if (desde < hasta && f[desde].esSimbolo("(") && cierre(f, desde) + 1 == hasta) {
                ++desde;
                --hasta;
            }
            Procedimiento p;
            for (const auto& [a, b] : porComas(f, desde, hasta)) {
                Parametro q{f[a].texto, a + 1 < b ? f[a + 1].texto : QString(), QString()};
                for (size_t j = a; j < b; ++j)
                    if (f[j].esSimbolo("=")) {
                        size_t fin = b;
                        if (f[fin - 1].es("OUTPUT") || f[fin - 1].es("OUT"))
                            --fin;
                        q.defecto = valorDe(f, j + 1, fin);
                        break;
                    }
                p.parametros.push_back(q);
            }
            p.conjuntos = conjuntosDe(f, as + 1, f.size());
            c.procedimientos.insert(nombre.toLower(), p);
            c.nombres.insert(nombre.toLower(), nombre);
            break; // a procedure stands alone in its batch
        }
    }
    return c;
}

// Every disagreement between the two, one line each.
QStringList diferencias(const Contrato& e, const Contrato& s)
{
    QStringList r;
    const auto deUnLado = [&](const char* clase, const auto& enE, const auto& enS) {
        for (const QString& n : enE.keys())
            if (!enS.contains(n))
                r << QStringLiteral("%1 %2: only embedded").arg(QLatin1String(clase), e.nombres[n]);
        for (const QString& n : enS.keys())
            if (!enE.contains(n))
                r << QStringLiteral("%1 %2: only on SQL Server").arg(QLatin1String(clase), s.nombres[n]);
    };
    for (const QString& x : e.sinLeer)
        r << QStringLiteral("embedded schema: %1 is not followed by this test").arg(x);
    for (const QString& x : s.sinLeer)
        r << QStringLiteral("SQL Server script: %1 is not followed by this test").arg(x);
    // Two result columns whose names cannot be read would pass as equal.
    for (const auto* c : {&e, &s})
        for (auto it = c->procedimientos.begin(); it != c->procedimientos.end(); ++it)
            for (const QStringList& conjunto : it.value().conjuntos)
                if (conjunto.contains(QStringLiteral("?")))
                    r << QStringLiteral("procedure %1: a result column without a readable name (%2)")
                             .arg(c->nombres[it.key()], c == &e ? QStringLiteral("embedded") : QStringLiteral("SQL Server"));
    deUnLado("procedure", e.procedimientos, s.procedimientos);
    for (const QString& n : e.procedimientos.keys()) {
        if (!s.procedimientos.contains(n))
            continue;
        const Procedimiento& a = e.procedimientos[n];
        const Procedimiento& b = s.procedimientos[n];
        const QString nombre = e.nombres[n];
        if (a.parametros.size() != b.parametros.size())
            r << QStringLiteral("procedure %1: %2 parameters embedded, %3 on SQL Server").arg(nombre).arg(a.parametros.size()).arg(b.parametros.size());
        for (size_t i = 0; i < std::min(a.parametros.size(), b.parametros.size()); ++i) {
            const Parametro &x = a.parametros[i], &y = b.parametros[i];
            if (x.nombre.compare(y.nombre, Qt::CaseInsensitive) != 0)
                r << QStringLiteral("procedure %1: parameter %2 is %3 embedded, %4 on SQL Server").arg(nombre).arg(i + 1).arg(x.nombre, y.nombre);
            if (!compatibles(x.tipo, y.tipo))
                r << QStringLiteral("procedure %1: parameter %2 is %3 embedded, %4 on SQL Server").arg(nombre, x.nombre, x.tipo, y.tipo);
            if (x.defecto != y.defecto)
                r << QStringLiteral("procedure %1: parameter %2 defaults to [%3] embedded, [%4] on SQL Server").arg(nombre, x.nombre, x.defecto, y.defecto);
        }
        const auto sets = [](const std::vector<QStringList>& c) {
            QStringList t;
            for (const QStringList& l : c)
                t << l.join(QLatin1Char(',')).toLower();
            return t.join(QLatin1String(" | "));
        };
        if (sets(a.conjuntos) != sets(b.conjuntos))
            r << QStringLiteral("procedure %1: returns [%2] embedded, [%3] on SQL Server").arg(nombre, sets(a.conjuntos), sets(b.conjuntos));
    }
    deUnLado("table", e.tablas, s.tablas);
    for (const QString& t : e.tablas.keys()) {
        if (!s.tablas.contains(t))
            continue;
        const auto &a = e.tablas[t], &b = s.tablas[t];
        const QString nombre = e.nombres[t];
        if (a.size() != b.size())
            r << QStringLiteral("table %1: %2 columns embedded, %3 on SQL Server").arg(nombre).arg(a.size()).arg(b.size());
        for (size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
            if (a[i].nombre.compare(b[i].nombre, Qt::CaseInsensitive) != 0)
                r << QStringLiteral("table %1: column %2 is %3 embedded, %4 on SQL Server").arg(nombre).arg(i + 1).arg(a[i].nombre, b[i].nombre);
            else if (!compatibles(a[i].tipo, b[i].tipo))
                r << QStringLiteral("table %1: column %2 is %3 embedded, %4 on SQL Server").arg(nombre, a[i].nombre, a[i].tipo, b[i].tipo);
            // A moment not yet set is NULL in a datetime and '' in the embedded text.
            else if (familia(b[i].tipo) == QLatin1String("momento") && b[i].nulo && b[i].defecto.isEmpty()
                     && !a[i].nulo && a[i].defecto == QLatin1String("''"))
                continue;
            else if (a[i].nulo != b[i].nulo)
                r << QStringLiteral("table %1: column %2 takes NULL on one side only").arg(nombre, a[i].nombre);
            // A default that calls a function (the moment of the insert) is
            // each dialect's own; literal defaults must agree.
            else if (a[i].defecto != b[i].defecto && !a[i].defecto.contains(QLatin1Char('('))
                     && !b[i].defecto.contains(QLatin1Char('(')))
                r << QStringLiteral("table %1: column %2 defaults to [%3] embedded, [%4] on SQL Server")
                         .arg(nombre, a[i].nombre, a[i].defecto, b[i].defecto);
            else if (familia(b[i].tipo) == QLatin1String("texto") && a[i].largo != b[i].largo)
                r << QStringLiteral("table %1: column %2 holds %3 characters embedded, %4 on SQL Server")
                         .arg(nombre, a[i].nombre, a[i].largo ? QString::number(a[i].largo) : QStringLiteral("any"),
                              b[i].largo ? QString::number(b[i].largo) : QStringLiteral("any"));
        }
    }
    return r;
}

// The SQL Server side as the deployment script puts it together: the tables,
// then each function, trigger and procedure from its own file.
QString scriptSqlServer()
{
    QStringList partes{leer(QStringLiteral(CARPETA_BD "/sqlserver/esquema.sql"))};
    for (const char* clase : {"funciones", "disparadores", "procedimientos"}) {
        const QDir carpeta(QStringLiteral(CARPETA_BD "/sqlserver/") + QLatin1String(clase));
        for (const QString& archivo : carpeta.entryList({QStringLiteral("*.sql")}, QDir::Files, QDir::Name))
            partes << leer(carpeta.filePath(archivo));
    }
    return partes.join(QStringLiteral("\ngo\n"));
}

QMap<QString, QString> archivosEmbebidos()
{
    QMap<QString, QString> r;
    const QDir carpeta(QStringLiteral(CARPETA_BD "/procedimientos"));
    for (const QString& archivo : carpeta.entryList({QStringLiteral("*.sql")}, QDir::Files))
        r.insert(QFileInfo(archivo).completeBaseName(), leer(carpeta.filePath(archivo)));
    return r;
}

} // namespace

class PruebaContrato : public QObject {
    Q_OBJECT
private slots:
    void losDosServidoresDicenLoMismo()
    {
        const Contrato e = embebido(archivosEmbebidos(), leer(QStringLiteral(CARPETA_BD "/esquema.sql")));
        const Contrato s = sqlServer(scriptSqlServer());
        QVERIFY(e.procedimientos.size() > 20 && e.tablas.size() > 10);
        QCOMPARE(e.procedimientos.value("tru_carga_tablas_03").conjuntos.size(), size_t(9));
        const QStringList todas = diferencias(e, s);
        for (const QString& d : todas)
            qWarning("%s", qPrintable(d));
        QVERIFY2(todas.isEmpty(), qPrintable(QStringLiteral("%1 disagreements, above").arg(todas.size())));
    }

    // A change on one side only is caught: a procedure on one side, a
    // parameter added, moved or given another default, a result column
    // renamed or moved, a table column renamed, retyped, made nullable, given
    // another default or a longer text, a table altered after its creation.
    void unCambioDeUnSoloLadoSeVe()
    {
        const QMap<QString, QString> archivos = archivosEmbebidos();
        const QString esquema = leer(QStringLiteral(CARPETA_BD "/esquema.sql"));
        const QString script = scriptSqlServer();
        const Contrato e = embebido(archivos, esquema);
        const QStringList antes = diferencias(e, sqlServer(script));
        const auto nuevas = [&](const Contrato& otroE, const QString& otroScript) {
            QStringList r = diferencias(otroE, sqlServer(otroScript));
            for (const QString& vieja : antes)
                r.removeOne(vieja);
            return r;
        };
        const auto cambiado = [&](const char* de, const char* a) {
            QString s = script;
            s.replace(QString::fromUtf8(de), QString::fromUtf8(a));
            return s == script ? QStringList{QStringLiteral("(the text to change is gone from the script)")}
                               : nuevas(e, s);
        };

        QMap<QString, QString> sinUno = archivos;
        sinUno.remove(QStringLiteral("TRU_CONCEPTOS"));
        QCOMPARE(nuevas(embebido(sinUno, esquema), script), QStringList{"procedure TRU_CONCEPTOS: only on SQL Server"});
        QCOMPARE(cambiado("PROCEDURE dbo.TRU_CONCEPTOS\n", "PROCEDURE dbo.TRU_CONCEPTOS_2\n"),
                 (QStringList{"procedure TRU_CONCEPTOS: only embedded", "procedure TRU_CONCEPTOS_2: only on SQL Server"}));

        // One text of the script replaced, and the disagreement it brings: the only
        // one, or (when the change moves more than it names) among others.
        const struct {
            const char *de, *a, *esperada;
            bool sola;
        } cambios[] = {
            {"@letra varchar(5) = ''\nAS", "@letra varchar(5) = '',\n    @extra int = 0\nAS",
             "procedure TRU_IN_SERVICIOS_02: 5 parameters embedded, 6 on SQL Server", true},
            {"@sw_calculos int = 1,\n    @letra varchar(5) = ''\nAS", "@sw_calculos int = 2,\n    @letra varchar(5) = ''\nAS",
             "procedure TRU_IN_SERVICIOS_02: parameter @sw_calculos defaults to [1] embedded, [2] on SQL Server", true},
            {"@decimales int = 2,\n    @sw_calculos int = 1,", "@sw_calculos int = 1,\n    @decimales int = 2,",
             "procedure TRU_IN_SERVICIOS_02: parameter 3 is @decimales embedded, @sw_calculos on SQL Server", false},
            {"MAX(SECUENCIA), 0) AS secuenciA", "MAX(SECUENCIA), 0) AS secuencia_ultima",
             "procedure TRU_Prepara: returns [secuencia | cuantas] embedded, [secuencia_ultima | cuantas] on SQL Server", true},
            {"SELECT C_CONCEPTO, D_CONCEPTO FROM dbo.conceptos", "SELECT D_CONCEPTO, C_CONCEPTO FROM dbo.conceptos",
             "procedure TRU_CONCEPTOS: returns [c_concepto,d_concepto] embedded, [d_concepto,c_concepto] on SQL Server", true},
            {"SELECT C_CONCEPTO, D_CONCEPTO FROM dbo.conceptos", "SELECT C_CONCEPTO, D_CONCEPTO + '' FROM dbo.conceptos",
             "procedure TRU_CONCEPTOS: a result column without a readable name (SQL Server)", false},
            {"C_CLIENTE      int ", "C_CLIENT       int ",
             "table MOVIMIENTOS: column 3 is C_CLIENTE embedded, C_CLIENT on SQL Server", true},
            {"C_CLIENTE      int ", "C_CLIENTE      varchar(4) ",
             "table MOVIMIENTOS: column C_CLIENTE is INTEGER embedded, varchar on SQL Server", true},
            {"ganancia       float        NOT NULL DEFAULT 100", "ganancia       float        NULL DEFAULT 100",
             "table MOVIMIENTOS: column ganancia takes NULL on one side only", true},
            {"ganancia       float        NOT NULL DEFAULT 100", "ganancia       float        NOT NULL DEFAULT (0)",
             "table MOVIMIENTOS: column ganancia defaults to [100] embedded, [0] on SQL Server", true},
            {"bancozelle     varchar(5)   NOT NULL DEFAULT '',", "bancozelle     varchar(5)   NOT NULL DEFAULT '',\n        otra int,",
             "table MOVIMIENTOS: 28 columns embedded, 29 on SQL Server", true},
            {"REFERENCIA     varchar(50)", "REFERENCIA     varchar(60)",
             "table MOVIMIENTOS: column REFERENCIA holds 50 characters embedded, 60 on SQL Server", true},
            {"version   bigint     NOT NULL,", "version   varchar(8) NOT NULL,",
             "table MOVIMIENTOS_VERSION: column version is INTEGER embedded, varchar on SQL Server", true},
            {"USE RAMIL;\ngo\n", "USE RAMIL;\ngo\nALTER TABLE dbo.MOVIMIENTOS ADD otra int NULL;\ngo\n",
             "SQL Server script: ALTER TABLE is not followed by this test", true},
        };
        for (const auto& c : cambios) {
            const QStringList r = cambiado(c.de, c.a);
            QVERIFY2(c.sola ? r == QStringList{c.esperada} : r.contains(c.esperada), qPrintable(c.a + (" -> " + r.join(" / "))));
        }
    }
};

REGISTRAR_PRUEBA(PruebaContrato);
#include "tst_contrato.moc"
