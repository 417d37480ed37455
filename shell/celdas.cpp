#include "celdas.h"
#include "fallo.h"
#include "formato.h"
#include "numeros.h"
#include "valor.h"

#include <numeric>

Celda::Celda(const Valor& valor)
{
    if (valor.esNulo())
        return;
    if (valor.esEntero() || valor.esReal())
        v_ = valor.aDouble();
    else
        v_ = valor.aTexto();
}

QString Celda::texto() const
{
    if (const Diferida* d = std::get_if<Diferida>(&v_))
        return d->patron ? d->patron->aplicar(d->valor) : Numeros::Str(d->valor);
    switch (tipo()) {
    case Tipo::Vacia:
        return {};
    case Tipo::Texto:
        return std::get<QString>(v_);
    case Tipo::Numero:
        return Numeros::Str(std::get<double>(v_));
    case Tipo::Logico:
        return std::get<bool>(v_) ? QStringLiteral("-1") : QStringLiteral("0");
    }
    return {};
}

double Celda::numero() const
{
    switch (tipo()) {
    case Tipo::Vacia:
        return 0;
    case Tipo::Texto:
        return Numeros::CDbl(texto());
    case Tipo::Numero:
        return std::get<double>(v_);
    case Tipo::Logico:
        return std::get<bool>(v_) ? -1 : 0;
    }
    return 0;
}

bool Celda::esVerdadero() const { return *this == -1.0; }

bool Celda::operator==(double numero) const
{
    if (esTexto()) {
        const QString t = texto();
        if (t.trimmed().isEmpty())
            return numero == 0;
        return Numeros::EsNumerico(t) && Numeros::CDbl(t) == numero;
    }
    return this->numero() == numero;
}

QString Format(const Celda& celda, const QString& patron)
{
    if (celda.esTexto())
        return Format(celda.texto(), patron);
    return Format(celda.numero(), patron);
}

void Celdas::ReDim(int primeraFila, int ultimaFila, int primeraCol, int ultimaCol)
{
    // Emptying: bounds -1 to -1, kept as a last row before the first, so no cell.
    vacia_ = primeraFila == -1 && ultimaFila == -1;
    if (vacia_)
        ultimaFila = -2;
    const int filas = std::max(0, ultimaFila - primeraFila + 1);
    const int columnas = std::max(0, ultimaCol - primeraCol + 1);
    if (primeraCol != primeraCol_ || ultimaCol != ultimaCol_) {
        // New columns: each row keeps the cells of the columns that stay.
        const int desde = std::max(primeraCol, primeraCol_), hasta = std::min(ultimaCol, ultimaCol_);
        for (Fila& fila : filas_) {
            Fila nueva(static_cast<size_t>(columnas));
            for (int c = desde; c <= hasta; ++c)
                nueva[size_t(c - primeraCol)] = std::move(fila[size_t(c - primeraCol_)]);
            fila = std::move(nueva);
        }
        primeraCol_ = primeraCol;
        ultimaCol_ = ultimaCol;
        columnas_ = columnas;
    }
    if (primeraFila != primeraFila_) {
        // The first row moves: rows before it go, rows in front of the old ones come.
        std::vector<Fila> nuevas(static_cast<size_t>(filas));
        const int desde = std::max(primeraFila, primeraFila_), hasta = std::min(ultimaFila, ultimaFila_);
        for (int f = desde; f <= hasta; ++f)
            nuevas[size_t(f - primeraFila)] = std::move(filas_[size_t(f - primeraFila_)]);
        filas_ = std::move(nuevas);
        for (Fila& fila : filas_)
            if (fila.size() != size_t(columnas_))
                fila.resize(size_t(columnas_));
        primeraFila_ = primeraFila;
        ultimaFila_ = ultimaFila;
        return;
    }
    // Only the last row moves, as in a load: the list of rows grows geometrically.
    if (size_t(filas) < filas_.size())
        filas_.resize(size_t(filas));
    else
        while (filas_.size() < size_t(filas))
            filas_.emplace_back(static_cast<size_t>(columnas_));
    ultimaFila_ = ultimaFila;
}

Celda& Celdas::Value(int fila, int col)
{
    if (!dentro(fila, col))
        throw FalloEjecucion::fueraDeRango();
    return filas_[size_t(fila - primeraFila_)][size_t(col - primeraCol_)];
}

const Celda& Celdas::Value(int fila, int col) const
{
    if (!dentro(fila, col))
        throw FalloEjecucion::fueraDeRango();
    return filas_[size_t(fila - primeraFila_)][size_t(col - primeraCol_)];
}

int Celdas::LowerBound(int dimension) const
{
    if (dimension == 1)
        return primeraFila_;
    if (dimension == 2)
        return primeraCol_;
    throw FalloEjecucion::fueraDeRango();
}

int Celdas::UpperBound(int dimension) const
{
    if (dimension == 1)
        return vacia_ ? -1 : ultimaFila_;
    if (dimension == 2)
        return ultimaCol_;
    throw FalloEjecucion::fueraDeRango();
}

namespace {

// The sort key of a cell for a numeric sort: numbers first, by value; then
// texts that are no numbers, by their text.
struct ClaveNumerica {
    bool esTexto;
    double numero;
    QString texto;
};

ClaveNumerica claveNumerica(const Celda& c)
{
    if (!c.esTexto())
        return {false, c.numero(), {}};
    QString t = c.texto();
    if (t.trimmed().isEmpty())
        return {false, 0, {}};
    if (Numeros::EsNumerico(t))
        return {false, Numeros::CDbl(t), {}};
    return {true, 0, std::move(t)};
}

bool menorNumerica(const ClaveNumerica& a, const ClaveNumerica& b)
{
    if (a.esTexto != b.esTexto)
        return !a.esTexto;
    if (a.esTexto)
        return QString::compare(a.texto, b.texto, Qt::CaseSensitive) < 0;
    return a.numero < b.numero;
}

} // namespace

void Celdas::QuickSort(int primera, int ultima, int col, Clave clave, Orden orden)
{
    if (primera > ultima || vacia_)
        return; // no rows to sort
    if (!dentro(primera, col) || !dentro(ultima, col))
        throw FalloEjecucion::fueraDeRango();
    const int n = ultima - primera + 1;
    std::vector<int> orden_(size_t(n), 0);
    std::iota(orden_.begin(), orden_.end(), 0);
    const bool descendente = orden == Orden::Descendente;

    if (clave == Clave::Texto) {
        std::vector<QString> claves(static_cast<size_t>(n));
        for (int i = 0; i < n; ++i)
            claves[size_t(i)] = Value(primera + i, col).texto();
        std::stable_sort(orden_.begin(), orden_.end(), [&](int a, int b) {
            const int r = QString::compare(claves[size_t(a)], claves[size_t(b)], Qt::CaseSensitive);
            return descendente ? r > 0 : r < 0;
        });
    } else {
        std::vector<ClaveNumerica> claves;
        claves.reserve(size_t(n));
        for (int i = 0; i < n; ++i)
            claves.push_back(claveNumerica(Value(primera + i, col)));
        std::stable_sort(orden_.begin(), orden_.end(), [&](int a, int b) {
            return descendente ? menorNumerica(claves[size_t(b)], claves[size_t(a)])
                               : menorNumerica(claves[size_t(a)], claves[size_t(b)]);
        });
    }

    // Whole rows move to their new places.
    std::vector<Fila> ordenadas(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i)
        ordenadas[size_t(i)] = std::move(filas_[size_t(primera - primeraFila_ + orden_[size_t(i)])]);
    for (int i = 0; i < n; ++i)
        filas_[size_t(primera - primeraFila_ + i)] = std::move(ordenadas[size_t(i)]);
}
