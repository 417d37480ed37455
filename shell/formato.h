#pragma once
// Display patterns of amounts, rates, codes and counters, as the screens write
// them into grid cells, footers and fields: Format(1234.5, "###,##0.00") gives
// "1.234,50". The output always carries the business's marks, "," decimal and
// "." thousands, whatever the machine's locale.
//
// Pattern characters: "0" a digit place that is always written, "#" a digit
// place written only when the number needs it, "," anywhere among the integer
// places groups the integer digits by thousands, the first "." is the decimal
// place; "\x" writes x, a text in double quotes is written as it stands; any
// other character is written as it stands at its place ("000-00").
// A number with more integer digits than places writes them all. Rounding is
// half away from zero, on the number's 15 significant decimal digits, so that
// 1,005 in "0.00" gives "1,01" as an operator expects. A negative number gets a
// leading "-", unless it rounds to zero in the pattern: then no sign is
// written, so a tiny negative remainder of a calculation shows as "0,00" and
// not "-0,00". The decimal mark is written whenever the pattern has a ".",
// even when no decimal digit follows ("#.##" of 5 gives "5,").
// A pattern without digit places ("&", "@", "") passes the value through as
// text: a number as Numeros::Str writes it, a text as it stands.
#include <QString>
#include <QVarLengthArray>

class Valor;

// A pattern read once and applied to many numbers: for loops over the rows of
// a load, compile the pattern before the loop.
class FormatoNumero {
public:
    FormatoNumero() : FormatoNumero(QString()) {}
    explicit FormatoNumero(const QString& patron);

    QString aplicar(double valor) const;
    QString operator()(double valor) const { return aplicar(valor); }

    const QString& patron() const { return patron_; }
    // True for a pattern without digit places: values pass through as text.
    bool esDeTexto() const { return deTexto_; }

private:
    enum class Pieza : char { Cero, Almohadilla, Literal };
    struct Elemento {
        Pieza pieza;
        char16_t caracter;
    };

    QString patron_;
    QVarLengthArray<Elemento, 12> entero_; // integer places and literals, left to right
    QVarLengthArray<Elemento, 8> decimal_; // decimal places and literals, left to right
    bool deTexto_ = true;
    bool agrupa_ = false;
    bool tienePunto_ = false;
    int lugaresEnteros_ = 0; // integer digit places
    int minimoEntero_ = 0;   // integer digits always written (from the first "0")
    int maximoDecimal_ = 0;  // decimal digit places
    int minimoDecimal_ = 0;  // decimal digits always written (up to the last "0")
};

// A number in the pattern. Patterns are compiled once and kept in a small cache.
QString Format(double valor, const QString& patron);
// A text: one that is a number in the business's form ("1.234,5", "12,5") is
// formatted as that number; any other text, the empty one included, is
// returned as it stands. A text pattern returns every text as it stands.
QString Format(const QString& texto, const QString& patron);
QString Format(const char* texto, const QString& patron);
// A value of a result set: a number is formatted, a text as above, a null
// gives the empty text, a date or bytes their text form.
QString Format(const Valor& valor, const QString& patron);
