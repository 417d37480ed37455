#pragma once
// The cell matrix behind a grid. A screen owns one Celdas per grid, fills it
// row by row from a result set, binds it to its Rejilla, and reads it back
// when it saves. Cells are untyped: empty, a text (amounts stand here as
// formatted text), a number, or a boolean in the hidden flag column that
// marks an edited row.
#include "formato.h"

#include <QString>

#include <algorithm>
#include <concepts>
#include <ranges>
#include <variant>
#include <vector>

class Valor;

class Celda {
public:
    enum class Tipo { Vacia, Texto, Numero, Logico };

    Celda() = default;
    Celda(const QString& texto) : v_(texto) {}
    Celda(QString&& texto) : v_(std::move(texto)) {}
    Celda(const char* texto) : v_(QString::fromUtf8(texto)) {}
    Celda(bool logico) : v_(logico) {}
    template <typename T>
    requires(std::integral<T> && !std::same_as<T, bool>) || std::floating_point<T> Celda(T numero) : v_(double(numero)) {}
    // A field of a result set: null gives an empty cell, a number a number,
    // anything else its text.
    Celda(const Valor& valor);
    // The text of the amount in the pattern, exactly as if formatted here,
    // but made only when it is read: a load of many rows keeps a number and
    // a pointer instead of a string of its own per amount, and only the rows
    // on screen are ever formatted. The pattern must outlive the cell (a
    // named constant of the screen).
    static Celda Cifra(const FormatoNumero& patron, double valor)
    {
        Celda c;
        c.v_ = Diferida {valor, &patron};
        return c;
    }

    // The text of a number as the run-time writes it (Str), made when read.
    static Celda Texto_De(double valor)
    {
        Celda c;
        c.v_ = Diferida {valor, nullptr};
        return c;
    }

    // An amount made by Cifra, as its value and its pattern (an export
    // writes the number and shows it in the same pattern); for any other
    // cell the pattern is nullptr.
    struct Importe {
        double valor = 0;
        const FormatoNumero* patron = nullptr;
    };
    Importe importe() const
    {
        const Diferida* d = std::get_if<Diferida>(&v_);
        return d ? Importe {d->valor, d->patron} : Importe {};
    }

    Tipo tipo() const { return v_.index() == kDiferida ? Tipo::Texto : Tipo(v_.index()); }
    bool esVacia() const { return tipo() == Tipo::Vacia; }
    bool esTexto() const { return tipo() == Tipo::Texto; }
    bool esNumero() const { return tipo() == Tipo::Numero; }
    bool esLogico() const { return tipo() == Tipo::Logico; }

    // The text that the grid shows and that a screen trims and sends: a
    // number in the business's form without thousands marks (94.3 -> "94,3");
    // a boolean as the number the business stores for it, "-1" for true and
    // "0" for false; an empty cell as "".
    QString texto() const;
    // Length of the text; 0 for an empty cell.
    int Len() const { return int(texto().size()); }
    // As a number: empty 0, true -1, a text through Numeros::CDbl (a text
    // that is not a number is a type mismatch, as for any conversion).
    double numero() const;
    // True when the cell is a set flag: the boolean true, or a value equal to
    // it (-1). The texts "0" and "" are no set flag.
    bool esVerdadero() const;

    // Comparisons as the screens write them. Against a number: an empty cell
    // equals 0, a text that is not a number equals no number. Against a text:
    // the cell's text. Against a boolean: true is -1, false is 0.
    bool operator==(double numero) const;
    bool operator==(int numero) const { return *this == double(numero); }
    bool operator==(const QString& texto) const { return this->texto() == texto; }
    bool operator==(const char* texto) const { return this->texto() == QString::fromUtf8(texto); }
    bool operator==(bool logico) const { return *this == (logico ? -1.0 : 0.0); }

private:
    // An amount whose text is its pattern applied to it (no pattern: Str),
    // a text cell.
    struct Diferida {
        double valor;
        const FormatoNumero* patron;
    };
    // The order follows Tipo; the deferred text comes last.
    std::variant<std::monostate, QString, double, bool, Diferida> v_;
    static constexpr size_t kDiferida = 4;
};

// The cell in a display pattern: a number or a numeric text is formatted, an
// empty cell as 0, a boolean as -1 or 0, other text as it stands.
QString Format(const Celda& celda, const QString& patron);

class Celdas {
public:
    enum class Clave { Texto, Numero };
    enum class Orden { Ascendente, Descendente };

    // A new matrix is empty: rows -1 to -1, column 0.
    Celdas() { ReDim(-1, -1, 0, 0); }

    // Sets the bounds; cells that stay inside keep their content, the others
    // are dropped, new cells are empty. ReDim(-1, -1, 0, n) empties the
    // matrix: its row bounds are then -1 and -1 but it holds no cell at all,
    // so a walk over Filas() visits nothing and a sort has nothing to move.
    // Growing the last row by one with the same columns costs amortised
    // constant time.
    void ReDim(int primeraFila, int ultimaFila, int primeraCol, int ultimaCol);

    // A cell, to read or to write (Value(i, 3) = texto). Outside the bounds:
    // the run-time failure "Subíndice fuera del intervalo". A reference stays good
    // until the next ReDim or sort.
    Celda& Value(int fila, int col);
    const Celda& Value(int fila, int col) const;
    Celda& operator()(int fila, int col) { return Value(fila, col); }
    const Celda& operator()(int fila, int col) const { return Value(fila, col); }
    bool dentro(int fila, int col) const
    {
        return fila >= primeraFila_ && fila <= ultimaFila_ && col >= primeraCol_ && col <= ultimaCol_;
    }

    // Dimension 1 the rows, 2 the columns; any other is out of range.
    int LowerBound(int dimension) const;
    int UpperBound(int dimension) const;
    // Rows from 0 to the last row: what a grid shows. 0 when empty.
    int filas() const { return ultimaFila_ < 0 ? 0 : ultimaFila_ - std::max(primeraFila_, 0) + 1; }
    // True after ReDim(-1, -1, ...): bounds -1 to -1 and no cell.
    bool Vacia() const { return vacia_; }
    // The rows of a walk, LowerBound(1) to UpperBound(1); none when empty.
    auto Filas() const { return std::views::iota(primeraFila_, std::max(primeraFila_, ultimaFila_ + 1)); }

    // Sorts rows primera to ultima by the column, whole rows moving together;
    // rows with equal keys keep their order. With Clave::Texto the cells'
    // texts compare character by character ("10" before "9"). With
    // Clave::Numero a numeric text compares by its value ("1.234,50" as
    // 1234.5), an empty cell as 0, and texts that are not numbers come after
    // all numbers, among themselves as texts.
    void QuickSort(int primera, int ultima, int col, Clave clave = Clave::Texto, Orden orden = Orden::Ascendente);

private:
    // One vector per row: a load grows the list of rows and a sort moves rows,
    // neither moves cells.
    using Fila = std::vector<Celda>;
    std::vector<Fila> filas_;
    // An empty matrix keeps ultimaFila_ below primeraFila_, so it has no row.
    int primeraFila_ = 0, ultimaFila_ = -1, primeraCol_ = 0, ultimaCol_ = -1;
    int columnas_ = 0;
    bool vacia_ = false;
};
