#pragma once
// What the parts of the console share: the display patterns of a load, the
// texts of a saved row's statement, and the run-time's arithmetic.
#include "fallo.h"
#include "formato.h"
#include "pantalla.h"

#include <QString>

#include <cmath>

namespace consola {

// Patterns of the load, read once for all rows.
inline const FormatoNumero f0000(QStringLiteral("0000"));
inline const FormatoNumero f00(QStringLiteral("00"));
inline const FormatoNumero fEnvio(QStringLiteral("####.00"));
inline const FormatoNumero f3_0_00(QStringLiteral("###0.00"));
inline const FormatoNumero f2_0_00(QStringLiteral("##0.00"));
inline const FormatoNumero fMiles00(QStringLiteral("###,###.00"));
inline const FormatoNumero fTasa(QStringLiteral("###0.0000"));
inline const FormatoNumero fTexto(QStringLiteral("&"));

// The text the server reads: the decimal comma becomes a point.
inline QString punto(QString texto) { return texto.replace(QLatin1Char(','), QLatin1Char('.')); }

// A division of the run-time: by zero it stops the program.
inline double dividir(double a, double b)
{
    if (b == 0)
        throw FalloEjecucion::divisionPorCero();
    return a / b;
}

// One assignment of a saved row's statement.
inline QString asigna(const char* campo, const QString& valor)
{
    return QStringLiteral(" %1 =  '").arg(QLatin1String(campo)) + valor + QStringLiteral("',");
}

// Rounded to 4 decimals, ties to even, as the run-time's Round.
inline double redondea4(double valor) { return std::nearbyint(valor * 10000.0) / 10000.0; }

// The hourglass for the length of a query, also when it fails.
struct RelojDeArena {
    RelojDeArena() { Pantalla::Reloj_De_Arena(true); }
    ~RelojDeArena() { Pantalla::Reloj_De_Arena(false); }
};

inline Alineacion alineacionDe(char a)
{
    switch (a) {
    case 'C':
        return Alineacion::Centro;
    case 'R':
        return Alineacion::Derecha;
    default:
        return Alineacion::General;
    }
}

} // namespace consola
