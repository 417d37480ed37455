#pragma once
// The arrays of the reference cache keep the bounds of the original: an index
// outside them is a range failure, never a silent read.
#include "fallo.h"

#include <QString>
#include <array>
#include <vector>

// Fixed array with indexes 0 to Ultimo.
template <typename T, int Ultimo> class ArregloFijo {
public:
    T& operator()(long i)
    {
        comprobar(i);
        return datos_[size_t(i)];
    }
    const T& operator()(long i) const
    {
        comprobar(i);
        return datos_[size_t(i)];
    }
    static constexpr int UBound() { return Ultimo; }
    void llenar(const T& v) { datos_.fill(v); }

private:
    static void comprobar(long i)
    {
        if (i < 0 || i > Ultimo)
            throw FalloEjecucion::fueraDeRango();
    }
    std::array<T, Ultimo + 1> datos_ {};
};

// Text table with columns 0 to Columnas-1 and rows that grow (0 to UBound()).
template <int Columnas> class TablaTexto {
public:
    TablaTexto() { filas_.resize(1); }
    // ReDim: rows 0 to ultima, emptied.
    void ReDim(long ultima) { filas_.assign(size_t(ultima + 1), {}); }
    // ReDim Preserve: rows 0 to ultima, keeping what is there.
    void ReDimPreserve(long ultima) { filas_.resize(size_t(ultima + 1)); }
    long UBound() const { return long(filas_.size()) - 1; }

    QString& operator()(long fila, int columna)
    {
        comprobar(fila, columna);
        return filas_[size_t(fila)][size_t(columna)];
    }
    const QString& operator()(long fila, int columna) const
    {
        comprobar(fila, columna);
        return filas_[size_t(fila)][size_t(columna)];
    }

private:
    void comprobar(long fila, int columna) const
    {
        if (fila < 0 || fila >= long(filas_.size()) || columna < 0 || columna >= Columnas)
            throw FalloEjecucion::fueraDeRango();
    }
    std::vector<std::array<QString, Columnas>> filas_;
};
