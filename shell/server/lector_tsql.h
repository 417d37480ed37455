#pragma once
// The one reader of T-SQL text: the raw statements of the screens before
// either server runs them (the guard, the adapter of the embedded server) and
// the definition files of both servers.
#include "fallo.h"

#include <QString>
#include <utility>
#include <vector>

namespace LectorTsql {

// One piece of a text: a word, a number, a quoted text (its value, with ''
// read as one quote) or a symbol, with its place in the text.
struct Pieza {
    enum Clase { Palabra, Numero, Cadena, Simbolo } clase;
    qsizetype inicio;
    qsizetype fin; // one past the last character
    QString texto;
    bool es(const char* palabra) const
    {
        return clase == Palabra && texto.compare(QLatin1String(palabra), Qt::CaseInsensitive) == 0;
    }
    bool esSimbolo(const char* s) const { return clase == Simbolo && texto == QLatin1String(s); }
};
using Piezas = std::vector<Pieza>;

enum class Modo {
    // A raw statement of a screen. Outside quotes only ASCII words, numbers,
    // blanks (space, tab, line ends) and the symbols = < > + - * / ( ) , are
    // known; comments, ';', brackets, double quotes and anything else are a
    // syntax failure, as an unclosed quote, a number run into a word and a
    // control character inside quotes are.
    Sentencia,
    // A definition file: comments are dropped, [name] and "name" are words,
    // N'text' is a text, a number runs to the end of its letters and digits,
    // and any other character is a symbol of its own. Nothing is refused.
    Definicion,
};

// The blanks that both servers read as blanks: space, tab and line ends.
bool esBlanco(QChar c);

// Splits a text into pieces.
Piezas trocear(const QString& sql, Modo modo = Modo::Sentencia);

// The server's refusal of a text that does not parse there.
FalloEjecucion sintaxis(const QString& cerca);

// The statements of a batch, as ranges of pieces: they stand one behind the
// other with no separator, so each INSERT, UPDATE or DELETE outside quotes
// starts the next one.
std::vector<std::pair<size_t, size_t>> sentencias(const Piezas& piezas);

// A walk through the pieces [desde, hasta) of one statement; the first piece
// out of place is the refusal, named as the server names the place of a
// syntax error (the last piece, when the statement ends too soon).
class Cursor {
public:
    Cursor(const Piezas& piezas, size_t desde, size_t hasta) : p_(piezas), i_(desde), fin_(hasta) {}

    bool alFinal() const { return i_ >= fin_; }
    size_t posicion() const { return i_; }
    const Pieza& pieza(size_t k) const { return p_[k]; }
    // The piece at hand; past the end, the refusal.
    const Pieza& actual() const
    {
        if (alFinal())
            rechazar();
        return p_[i_];
    }
    const Pieza& tomar()
    {
        const Pieza& p = actual();
        ++i_;
        return p;
    }
    bool viene(const char* palabra) const { return !alFinal() && p_[i_].es(palabra); }
    bool vieneSimbolo(const char* s) const { return !alFinal() && p_[i_].esSimbolo(s); }
    [[noreturn]] void rechazar() const { throw sintaxis(alFinal() ? (fin_ > 0 ? p_[fin_ - 1].texto : QString()) : p_[i_].texto); }
    void esperar(const char* palabra)
    {
        if (!viene(palabra))
            rechazar();
        ++i_;
    }
    void esperarSimbolo(const char* s)
    {
        if (!vieneSimbolo(s))
            rechazar();
        ++i_;
    }
    bool aceptar(const char* palabra)
    {
        if (!viene(palabra))
            return false;
        ++i_;
        return true;
    }
    bool aceptarSimbolo(const char* s)
    {
        if (!vieneSimbolo(s))
            return false;
        ++i_;
        return true;
    }
    void terminar() const
    {
        if (!alFinal())
            rechazar();
    }

protected:
    const Piezas& p_;
    size_t i_;
    size_t fin_;
};

} // namespace LectorTsql
