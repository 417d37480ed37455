// The two servers are one contract: the embedded definitions and the SQL Server
// deployment script, read as text, declare the same procedures (parameters,
// defaults, result columns) and the same tables (columns, types, lengths).
#include "lector_tsql.h"
#include "prueba.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <algorithm>

namespace {

using Ficha = LectorTsql::Pieza;
using Fichas = LectorTsql::Piezas;

// Words, numbers, quoted texts and symbols; comments dropped; [name] and
// "name" are words; N'text' is a text.
Fichas fichas(const QString& sql) { return LectorTsql::trocear(sql, LectorTsql::Modo::Definicion); }

// True when the token is one of the words.
bool unaDe(const Ficha& f, std::initializer_list<const char*> palabras)
{
    return std::any_of(palabras.begin(), palabras.end(), [&f](const char* w) { return f.es(w); });
}

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
    size_t inicio = desde;
    for (size_t i = desde; i < hasta; i = f[i].esSimbolo("(") ? cierre(f, i) + 1 : i + 1)
        if (f[i].esSimbolo(",")) {
            r.push_back({inicio, i});
            inicio = i + 1;
        }
    if (inicio < hasta)
        r.push_back({inicio, hasta});
    return r;
}

// A default as a comparable text: NULL, a number, or a quoted text.
QString valorDe(const Fichas& f, size_t desde, size_t hasta)
{
    QString r;
    for (size_t i = desde; i < hasta; ++i)
        r += f[i].clase == Ficha::Cadena ? QStringLiteral("'%1'").arg(f[i].texto) : f[i].texto.toUpper();
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
// A text's length in characters (0: unlimited); the DEFAULT as a comparable
// text, empty when there is none.
struct Columna {
    QString nombre, tipo;
    int largo = 0;
    bool nulo; // takes NULL
    QString defecto;
};
struct Contrato {
    QMap<QString, Procedimiento> procedimientos; // by name in lower case
    QMap<QString, std::vector<Columna>> tablas;
    QMap<QString, QString> nombres; // lower case -> as written
    QStringList sinLeer;            // statements that change a table after its CREATE
};

// The kind of a declared type, so that the two dialects compare; moments are
// 'yyyy-mm-dd hh:mm:ss' text on the embedded server.
QString familia(const QString& tipo)
{
    static const std::pair<const char*, QStringList> familias[] = {
        {"entero", {"integer", "int", "smallint", "tinyint", "bigint", "bit"}},
        {"real", {"real", "float", "decimal", "numeric", "money", "smallmoney"}},
        {"texto", {"text", "varchar", "nvarchar", "char", "nchar"}},
        {"momento", {"datetime", "date", "smalldatetime", "datetime2"}},
        {"bytes", {"blob", "varbinary", "image"}},
    };
    for (const auto& [nombre, tipos] : familias)
        if (tipos.contains(tipo.toLower()))
            return QLatin1String(nombre);
    return tipo.toLower();
}

bool compatibles(const QString& a, const QString& b)
{
    const QStringList textoOMomento {QStringLiteral("texto"), QStringLiteral("momento")};
    return familia(a) == familia(b) || (textoOMomento.contains(familia(a)) && textoOMomento.contains(familia(b)));
}

// The names of the result columns of a select list: the alias after AS, the
// T-SQL "name = value", or the column itself ("t.col" gives "col").
QStringList columnasDe(const Fichas& f, size_t desde, size_t hasta)
{
    QStringList r;
    for (const auto& [a, b] : porComas(f, desde, hasta)) {
        QString nombre = QStringLiteral("?");
        for (size_t i = a; i < b; i = f[i].esSimbolo("(") ? cierre(f, i) + 1 : i + 1)
            if (f[i].es("AS") && i + 1 < b)
                nombre = f[i + 1].texto;
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
    std::vector<QStringList> r;
    std::vector<bool> fuera(f.size(), false); // outside every parenthesis, not one itself
    for (size_t i = desde, nivel = 0; i < hasta; ++i) {
        nivel += f[i].esSimbolo("(");
        fuera[i] = nivel == 0 && !f[i].esSimbolo(")");
        nivel -= nivel > 0 && f[i].esSimbolo(")");
    }
    for (size_t i = desde; i < hasta; ++i) {
        if (!f[i].es("SELECT") || !fuera[i])
            continue;
        // what stands before it in its statement
        bool devuelve = true;
        for (size_t k = i; k-- > desde;) {
            if (!fuera[k])
                continue;
            devuelve = !unaDe(f[k], {"INSERT", "CREATE", "UNION", "EXCEPT", "INTERSECT", "ALL"});
            if (!devuelve || f[k].esSimbolo(";") ||
                unaDe(f[k], {"BEGIN", "END", "ELSE", "SET", "IF", "DECLARE", "RETURN", "WITH", "THEN", "COMMIT", "ROLLBACK",
                             "EXEC", "EXECUTE", "PRINT", "WHILE"}))
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
            if (!fuera[fin])
                continue;
            if (f[fin].es("CASE") || (casos > 0 && f[fin].es("END"))) {
                casos += f[fin].es("CASE") ? 1 : -1;
                continue;
            }
            if (casos == 0 && (f[fin].esSimbolo(";") ||
                               unaDe(f[fin], {"FROM",   "INTO",      "WHERE", "GROUP",   "ORDER",  "HAVING", "UNION",
                                              "EXCEPT", "INTERSECT", "END",   "ELSE",    "IF",     "SELECT", "INSERT",
                                              "UPDATE", "DELETE",    "SET",   "DECLARE", "RETURN", "BEGIN",  "COMMIT"})))
                break;
        }
        if (fin < hasta && f[fin].es("INTO"))
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
    Columna c {f[a].texto, a + 1 < b ? f[a + 1].texto : QString(), 0, true, QString()};
    for (size_t j = a + 2; j < b; ++j) {
        if ((f[j].es("NOT") && j + 1 < b && f[j + 1].es("NULL")) || f[j].es("PRIMARY"))
            c.nulo = false;
        if (!f[j].es("DEFAULT"))
            continue;
        size_t desde = j + 1, hasta = desde;
        if (hasta < b && f[hasta].esSimbolo("("))
            hasta = cierre(f, hasta) + 1;
        else
            while (hasta < b && !unaDe(f[hasta], {"NOT", "NULL", "CHECK", "PRIMARY", "CONSTRAINT", "REFERENCES"}))
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
template <class Largo> size_t tabla(const Fichas& f, size_t k, Contrato& c, Largo largo)
{
    const QString nombre = f[k].texto;
    const size_t abre = k + 1, cierra = cierre(f, abre);
    std::vector<Columna> columnas;
    for (const auto& [a, b] : porComas(f, abre + 1, cierra)) {
        if (unaDe(f[a], {"PRIMARY", "UNIQUE", "CONSTRAINT", "FOREIGN", "CHECK"}))
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
    return archivo.open(QIODevice::ReadOnly) ? QString::fromUtf8(archivo.readAll()) : QString();
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
        const size_t k = f[i + 2].es("IF") ? i + 5 : i + 2; // IF NOT EXISTS
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
                const size_t k = i + 4 < f.size() && f[i + 3].esSimbolo(".") ? i + 4 : i + 2; // dbo.
                i = tabla(f, k, c, [&f](Columna& col, size_t a, size_t b) {
                    // varchar without a length is one character
                    if (familia(col.tipo) == QLatin1String("texto"))
                        col.largo = a + 3 < b && f[a + 2].esSimbolo("(") ? (f[a + 3].es("max") ? 0 : f[a + 3].texto.toInt()) : 1;
                });
                continue;
            }
            if (!unaDe(f[i], {"CREATE", "ALTER"}))
                continue;
            size_t k = f[i + 1].es("OR") && f[i + 2].es("ALTER") ? i + 3 : i + 1;
            if (!unaDe(f[k], {"PROCEDURE", "PROC"}))
                continue;
            if (++k + 2 < f.size() && f[k + 1].esSimbolo("."))
                k += 2; // dbo.
            const QString nombre = f[k].texto;
            // the parameters run to the AS that opens the body
            size_t as = k + 1;
            while (as < f.size() && !f[as].es("AS"))
                as = f[as].esSimbolo("(") ? cierre(f, as) + 1 : as + 1;
            const bool entre = k + 1 < as && f[k + 1].esSimbolo("(") && cierre(f, k + 1) + 1 == as; // (parameters)
            const size_t desde = k + 1 + entre, hasta = as - entre;
            Procedimiento p;
            for (const auto& [a, b] : porComas(f, desde, hasta)) {
                Parametro q {f[a].texto, a + 1 < b ? f[a + 1].texto : QString(), QString()};
                for (size_t j = a; j < b; ++j)
                    if (f[j].esSimbolo("=")) {
                        q.defecto = valorDe(f, j + 1, unaDe(f[b - 1], {"OUTPUT", "OUT"}) ? b - 1 : b);
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
    for (const auto& [lado, c] : {std::pair {"embedded schema", &e}, std::pair {"SQL Server script", &s}})
        for (const QString& x : c->sinLeer)
            r << QStringLiteral("%1: %2 is not followed by this test").arg(QLatin1String(lado), x);
    // Two result columns whose names cannot be read would pass as equal.
    for (const auto* c : {&e, &s})
        for (auto it = c->procedimientos.begin(); it != c->procedimientos.end(); ++it)
            for (const QStringList& conjunto : it.value().conjuntos)
                if (conjunto.contains(QStringLiteral("?")))
                    r << QStringLiteral("procedure %1: a result column without a readable name (%2)")
                             .arg(c->nombres[it.key()], c == &e ? QStringLiteral("embedded") : QStringLiteral("SQL Server"));
    deUnLado("procedure", e.procedimientos, s.procedimientos);
    const auto sets = [](const std::vector<QStringList>& c) {
        QStringList t;
        for (const QStringList& l : c)
            t << l.join(QLatin1Char(',')).toLower();
        return t.join(QLatin1String(" | "));
    };
    for (const QString& n : e.procedimientos.keys()) {
        if (!s.procedimientos.contains(n))
            continue;
        const Procedimiento &a = e.procedimientos[n], &b = s.procedimientos[n];
        const QString p = QStringLiteral("procedure ") + e.nombres[n];
        if (a.parametros.size() != b.parametros.size())
            r << QStringLiteral("%1: %2 parameters embedded, %3 on SQL Server")
                     .arg(p)
                     .arg(a.parametros.size())
                     .arg(b.parametros.size());
        for (size_t i = 0; i < std::min(a.parametros.size(), b.parametros.size()); ++i) {
            const Parametro &x = a.parametros[i], &y = b.parametros[i];
            if (x.nombre.compare(y.nombre, Qt::CaseInsensitive) != 0)
                r << QStringLiteral("%1: parameter %2 is %3 embedded, %4 on SQL Server")
                         .arg(p)
                         .arg(i + 1)
                         .arg(x.nombre, y.nombre);
            if (!compatibles(x.tipo, y.tipo))
                r << QStringLiteral("%1: parameter %2 is %3 embedded, %4 on SQL Server").arg(p, x.nombre, x.tipo, y.tipo);
            if (x.defecto != y.defecto)
                r << QStringLiteral("%1: parameter %2 defaults to [%3] embedded, [%4] on SQL Server")
                         .arg(p, x.nombre, x.defecto, y.defecto);
        }
        if (sets(a.conjuntos) != sets(b.conjuntos))
            r << QStringLiteral("%1: returns [%2] embedded, [%3] on SQL Server").arg(p, sets(a.conjuntos), sets(b.conjuntos));
    }
    deUnLado("table", e.tablas, s.tablas);
    for (const QString& t : e.tablas.keys()) {
        if (!s.tablas.contains(t))
            continue;
        const auto &a = e.tablas[t], &b = s.tablas[t];
        const QString tabla = QStringLiteral("table ") + e.nombres[t];
        if (a.size() != b.size())
            r << QStringLiteral("%1: %2 columns embedded, %3 on SQL Server").arg(tabla).arg(a.size()).arg(b.size());
        const auto largo = [](int n) { return n ? QString::number(n) : QStringLiteral("any"); };
        for (size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
            const Columna &x = a[i], &y = b[i];
            if (x.nombre.compare(y.nombre, Qt::CaseInsensitive) != 0)
                r << QStringLiteral("%1: column %2 is %3 embedded, %4 on SQL Server")
                         .arg(tabla)
                         .arg(i + 1)
                         .arg(x.nombre, y.nombre);
            else if (!compatibles(x.tipo, y.tipo))
                r << QStringLiteral("%1: column %2 is %3 embedded, %4 on SQL Server").arg(tabla, x.nombre, x.tipo, y.tipo);
            // A moment not yet set is NULL in a datetime and '' in the embedded text.
            else if (familia(y.tipo) == QLatin1String("momento") && y.nulo && y.defecto.isEmpty() && !x.nulo &&
                     x.defecto == QLatin1String("''"))
                continue;
            else if (x.nulo != y.nulo)
                r << QStringLiteral("%1: column %2 takes NULL on one side only").arg(tabla, x.nombre);
            // A default that calls a function (the moment of the insert) is
            // each dialect's own; literal defaults must agree.
            else if (x.defecto != y.defecto && !x.defecto.contains(QLatin1Char('(')) && !y.defecto.contains(QLatin1Char('(')))
                r << QStringLiteral("%1: column %2 defaults to [%3] embedded, [%4] on SQL Server")
                         .arg(tabla, x.nombre, x.defecto, y.defecto);
            else if (familia(y.tipo) == QLatin1String("texto") && x.largo != y.largo)
                r << QStringLiteral("%1: column %2 holds %3 characters embedded, %4 on SQL Server")
                         .arg(tabla, x.nombre, largo(x.largo), largo(y.largo));
        }
    }
    return r;
}

// The SQL Server side as the deployment script puts it together: the tables,
// then each function, trigger and procedure from its own file.
QString scriptSqlServer()
{
    QStringList partes {leer(QStringLiteral(CARPETA_BD "/sqlserver/esquema.sql"))};
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

    const QMap<QString, QString> archivos_ = archivosEmbebidos();
    const QString esquema_ = leer(QStringLiteral(CARPETA_BD "/esquema.sql"));
    const QString script_ = scriptSqlServer();

    // The disagreements that a changed SQL Server script brings, beyond those there are.
    QStringList nuevas(const QString& script) const
    {
        QStringList r = diferencias(embebido(archivos_, esquema_), sqlServer(script));
        for (const QString& vieja : diferencias(embebido(archivos_, esquema_), sqlServer(script_)))
            r.removeOne(vieja);
        return r;
    }

private slots:
    void losDosServidoresDicenLoMismo()
    {
        const Contrato e = embebido(archivos_, esquema_);
        QVERIFY(e.procedimientos.size() > 20 && e.tablas.size() > 10);
        QCOMPARE(e.procedimientos.value("tru_carga_tablas_03").conjuntos.size(), size_t(9));
        const QStringList todas = diferencias(e, sqlServer(script_));
        for (const QString& d : todas)
            qWarning("%s", qPrintable(d));
        QVERIFY2(todas.isEmpty(), qPrintable(QStringLiteral("%1 disagreements, above").arg(todas.size())));
    }

    // A change of the SQL Server side alone is caught, each kind of change by its own message.
    void unCambioDeUnSoloLadoSeVe_data()
    {
        QTest::addColumn<QString>("de");
        QTest::addColumn<QString>("a");
        QTest::addColumn<QStringList>("esperadas");
        QTest::addColumn<bool>("solas"); // or (when the change moves more than it names) among others
        const struct {
            const char *de, *a, *esperada;
            bool sola;
        } cambios[] = {
            // clang-format off
            {"PROCEDURE dbo.TRU_CONCEPTOS\n", "PROCEDURE dbo.TRU_CONCEPTOS_2\n", "procedure TRU_CONCEPTOS: only embedded\nprocedure TRU_CONCEPTOS_2: only on SQL Server", true},
            {"@letra varchar(5) = ''\nAS", "@letra varchar(5) = '',\n    @extra int = 0\nAS", "procedure TRU_IN_SERVICIOS_02: 5 parameters embedded, 6 on SQL Server", true},
            {"@sw_calculos int = 1,\n    @letra varchar(5) = ''\nAS", "@sw_calculos int = 2,\n    @letra varchar(5) = ''\nAS", "procedure TRU_IN_SERVICIOS_02: parameter @sw_calculos defaults to [1] embedded, [2] on SQL Server", true},
            {"@decimales int = 2,\n    @sw_calculos int = 1,", "@sw_calculos int = 1,\n    @decimales int = 2,", "procedure TRU_IN_SERVICIOS_02: parameter 3 is @decimales embedded, @sw_calculos on SQL Server", false},
            {"MAX(SECUENCIA), 0) AS secuenciA", "MAX(SECUENCIA), 0) AS secuencia_ultima", "procedure TRU_Prepara: returns [secuencia | cuantas] embedded, [secuencia_ultima | cuantas] on SQL Server", true},
            {"SELECT C_CONCEPTO, D_CONCEPTO FROM dbo.conceptos", "SELECT D_CONCEPTO, C_CONCEPTO FROM dbo.conceptos", "procedure TRU_CONCEPTOS: returns [c_concepto,d_concepto] embedded, [d_concepto,c_concepto] on SQL Server", true},
            {"SELECT C_CONCEPTO, D_CONCEPTO FROM dbo.conceptos", "SELECT C_CONCEPTO, D_CONCEPTO + '' FROM dbo.conceptos", "procedure TRU_CONCEPTOS: a result column without a readable name (SQL Server)", false},
            {"C_CLIENTE      int ", "C_CLIENT       int ", "table MOVIMIENTOS: column 3 is C_CLIENTE embedded, C_CLIENT on SQL Server", true},
            {"C_CLIENTE      int ", "C_CLIENTE      varchar(4) ", "table MOVIMIENTOS: column C_CLIENTE is INTEGER embedded, varchar on SQL Server", true},
            {"ganancia       float        NOT NULL DEFAULT 100", "ganancia       float        NULL DEFAULT 100", "table MOVIMIENTOS: column ganancia takes NULL on one side only", true},
            {"ganancia       float        NOT NULL DEFAULT 100", "ganancia       float        NOT NULL DEFAULT (0)", "table MOVIMIENTOS: column ganancia defaults to [100] embedded, [0] on SQL Server", true},
            {"bancozelle     varchar(5)   NOT NULL DEFAULT '',", "bancozelle     varchar(5)   NOT NULL DEFAULT '',\n        otra int,", "table MOVIMIENTOS: 28 columns embedded, 29 on SQL Server", true},
            {"REFERENCIA     varchar(50)", "REFERENCIA     varchar(60)", "table MOVIMIENTOS: column REFERENCIA holds 50 characters embedded, 60 on SQL Server", true},
            {"version   bigint     NOT NULL,", "version   varchar(8) NOT NULL,", "table MOVIMIENTOS_VERSION: column version is INTEGER embedded, varchar on SQL Server", true},
            {"USE RAMIL;\ngo\n", "USE RAMIL;\ngo\nALTER TABLE dbo.MOVIMIENTOS ADD otra int NULL;\ngo\n", "SQL Server script: ALTER TABLE is not followed by this test", true},
            // clang-format on
        };
        for (const auto& c : cambios)
            QTest::newRow(c.a) << QString::fromUtf8(c.de) << QString::fromUtf8(c.a) << QString::fromUtf8(c.esperada).split('\n')
                               << c.sola;
    }
    void unCambioDeUnSoloLadoSeVe()
    {
        QFETCH(QString, de);
        QFETCH(QString, a);
        QFETCH(QStringList, esperadas);
        QFETCH(bool, solas);
        QVERIFY2(script_.contains(de), "the text to change is gone from the script");
        const QStringList r = nuevas(QString(script_).replace(de, a));
        QVERIFY2(solas ? r == esperadas : r.contains(esperadas[0]), qPrintable(r.join(" / ")));
    }
};

REGISTRAR_PRUEBA(PruebaContrato);
#include "tst_contrato.moc"
