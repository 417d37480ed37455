// The raw T-SQL texts of the client, adapted to the embedded server.
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
// Raw statements: the T-SQL text of the client, already passed by the guard
// ---------------------------------------------------------------------------

namespace {

// Words that start another statement or clause: none stands inside a value.
bool reservada(const Pieza& p)
{
    static const char* const palabras[] = {
        "SELECT",    "INSERT", "UPDATE",  "DELETE", "FROM",    "WHERE", "INTO",    "SET",    "VALUES", "UNION",    "EXCEPT",
        "INTERSECT", "EXEC",   "EXECUTE", "DROP",   "CREATE",  "ALTER", "ATTACH",  "DETACH", "PRAGMA", "TOP",      "ORDER",
        "GROUP",     "HAVING", "LIMIT",   "JOIN",   "ON",      "AS",    "REPLACE", "BEGIN",  "COMMIT", "ROLLBACK", "VACUUM",
        "RETURNING", "WITH",   "TABLE",   "INDEX",  "TRIGGER", "VIEW",  "DECLARE", "GO",     "USE",    "GRANT"};
    if (p.clase != Pieza::Palabra)
        return false;
    for (const char* w : palabras)
        if (p.es(w))
            return true;
    return false;
}

} // namespace

// One statement of the client, read against the few shapes this server takes.
class Analizador : public LectorTsql::Cursor {
public:
    Analizador(const QString& sql, const Piezas& piezas, size_t desde, size_t hasta) : Cursor(piezas, desde, hasta), sql_(sql) {}

    // A name of a table or column: a word that is neither reserved nor a variable.
    const Pieza& nombre()
    {
        const Pieza& p = actual();
        if (p.clase != Pieza::Palabra || reservada(p) || p.texto.startsWith(QLatin1Char('@')))
            rechazar();
        ++i_;
        return p;
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
            rechazar();
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
};

// "SELECT FECHA=GETDATE()", "select [top N] * from t [where ...]".
QString adaptarConsulta(const QString& sql, const Piezas& piezas)
{
    Analizador a(sql, piezas, 0, piezas.size());
    const Pieza& select = a.tomar();
    if (!select.es("SELECT"))
        throw sintaxis(select.texto);
    // The server's clock under a column name.
    if (piezas.size() == 6 && piezas[1].clase == Pieza::Palabra && piezas[2].esSimbolo("=") && piezas[3].es("GETDATE") &&
        piezas[4].esSimbolo("(") && piezas[5].esSimbolo(")") && !reservada(piezas[1]))
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
            const bool es = columna.isEmpty() ? c == posicion : columnas_[c].nombre.compare(columna, Qt::CaseInsensitive) == 0;
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
QString adaptarCambio(const QString& sql, const Piezas& piezas, size_t desde, size_t hasta,
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

} // namespace embebido
