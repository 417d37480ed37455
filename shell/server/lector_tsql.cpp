#include "lector_tsql.h"

namespace {

using LectorTsql::esBlanco;
using LectorTsql::Modo;
using LectorTsql::sintaxis;

bool esDigito(QChar c) { return c.unicode() >= '0' && c.unicode() <= '9'; }
bool esLetra(QChar c) { return (c.unicode() >= 'a' && c.unicode() <= 'z') || (c.unicode() >= 'A' && c.unicode() <= 'Z'); }
// Words of a statement are ASCII: a letter that looks like another to one
// server and not to the other could otherwise pass the guard as a known name.
bool empiezaPalabra(QChar c, Modo modo)
{
    return esLetra(c) || c == QLatin1Char('_') || c == QLatin1Char('@') || c == QLatin1Char('#') ||
           (modo == Modo::Definicion && c.isLetter());
}
bool siguePalabra(QChar c, Modo modo)
{
    return empiezaPalabra(c, modo) || esDigito(c) || c == QLatin1Char('$') || (modo == Modo::Definicion && c.isLetterOrNumber());
}

// The quoted text that starts at i, '' read as one quote; i ends past it.
QString cadena(const QString& sql, qsizetype& i, Modo modo)
{
    const qsizetype n = sql.size();
    QString valor;
    for (++i;; ++i) {
        if (i >= n) {
            if (modo == Modo::Definicion)
                return valor;
            throw FalloEjecucion::servidor(QStringLiteral("Unclosed quotation mark after the character string '%1'.").arg(valor));
        }
        if (sql[i] == QLatin1Char('\'')) {
            if (i + 1 < n && sql[i + 1] == QLatin1Char('\'')) {
                valor += QLatin1Char('\'');
                ++i;
                continue;
            }
            ++i;
            return valor;
        }
        // No field of the program holds a control character: one inside a
        // value of a statement (a NUL would cut it on one server and not on
        // the other) is refused like a broken text.
        const char16_t u = sql[i].unicode();
        if (modo == Modo::Sentencia && ((u < 0x20 && !esBlanco(sql[i])) || u == 0x7f))
            throw sintaxis(valor);
        valor += sql[i];
    }
}

} // namespace

namespace LectorTsql {

bool esBlanco(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\r') || c == QLatin1Char('\n');
}

FalloEjecucion sintaxis(const QString& cerca)
{
    return FalloEjecucion::servidor(QStringLiteral("Incorrect syntax near '%1'.").arg(cerca));
}

Piezas trocear(const QString& sql, Modo modo)
{
    const bool definicion = modo == Modo::Definicion;
    Piezas piezas;
    qsizetype i = 0;
    const qsizetype n = sql.size();
    while (i < n) {
        const QChar c = sql[i];
        if (esBlanco(c) || (definicion && c.isSpace())) {
            ++i;
            continue;
        }
        const QStringView dos = QStringView(sql).mid(i, 2);
        const bool comentario = dos == QLatin1String("--") || dos == QLatin1String("/*");
        if (definicion && comentario) {
            const qsizetype fin = dos == QLatin1String("--") ? sql.indexOf(QLatin1Char('\n'), i)
                                                             : sql.indexOf(QLatin1String("*/"), i + 2);
            i = fin < 0 ? n : fin + (dos == QLatin1String("--") ? 0 : 2);
            continue;
        }
        const qsizetype inicio = i;
        if (definicion && (c == QLatin1Char('N') || c == QLatin1Char('n')) && i + 1 < n && sql[i + 1] == QLatin1Char('\'')) {
            ++i; // N'text'
            const QString valor = cadena(sql, i, modo);
            piezas.push_back({Pieza::Cadena, inicio, i, valor});
        } else if (definicion && (c == QLatin1Char('[') || c == QLatin1Char('"'))) {
            const qsizetype fin = sql.indexOf(c == QLatin1Char('[') ? QLatin1Char(']') : QLatin1Char('"'), i + 1);
            i = fin < 0 ? n : fin + 1;
            piezas.push_back({Pieza::Palabra, inicio, i, sql.mid(inicio + 1, (fin < 0 ? n : fin) - inicio - 1)});
        } else if (empiezaPalabra(c, modo)) {
            while (i < n && siguePalabra(sql[i], modo))
                ++i;
            piezas.push_back({Pieza::Palabra, inicio, i, sql.mid(inicio, i - inicio)});
        } else if (esDigito(c) || (c == QLatin1Char('.') && i + 1 < n && esDigito(sql[i + 1]))) {
            while (i < n && esDigito(sql[i]))
                ++i;
            if (i < n && sql[i] == QLatin1Char('.'))
                for (++i; i < n && esDigito(sql[i]);)
                    ++i;
            if (definicion)
                while (i < n && (sql[i].isLetterOrNumber() || sql[i] == QLatin1Char('.')))
                    ++i; // 1e5, 0x1F
            else if (i < n && siguePalabra(sql[i], modo))
                throw sintaxis(sql.mid(inicio, i + 1 - inicio));
            piezas.push_back({Pieza::Numero, inicio, i, sql.mid(inicio, i - inicio)});
        } else if (c == QLatin1Char('\'')) {
            const QString valor = cadena(sql, i, modo);
            piezas.push_back({Pieza::Cadena, inicio, i, valor});
        } else {
            QString simbolo;
            for (const char* d : {"<=", ">=", "<>", "!="})
                if (dos == QLatin1String(d))
                    simbolo = QLatin1String(d);
            if (simbolo.isEmpty() && (definicion || QStringLiteral("=<>+-*/(),").contains(c)))
                simbolo = c;
            if (simbolo.isEmpty() || comentario)
                throw sintaxis(comentario ? dos.toString() : QString(c));
            i += simbolo.size();
            piezas.push_back({Pieza::Simbolo, inicio, i, simbolo});
        }
    }
    return piezas;
}

std::vector<std::pair<size_t, size_t>> sentencias(const Piezas& piezas)
{
    std::vector<std::pair<size_t, size_t>> r;
    size_t desde = 0;
    for (size_t k = 1; k <= piezas.size(); ++k) {
        if (k < piezas.size() && !piezas[k].es("INSERT") && !piezas[k].es("UPDATE") && !piezas[k].es("DELETE"))
            continue;
        r.push_back({desde, k});
        desde = k;
    }
    return r;
}

} // namespace LectorTsql
