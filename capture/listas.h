#pragma once
// The client and provider look-ups of the entry screens: a grid of code and
// name, filled from the rows of a procedure.
#include <QString>

class Celdas;
class Module1;
class Rejilla;

namespace Listas {

// The two columns of a look-up.
enum Columna : int { colCodigo = 0, colNombre };

// The two columns (the code, and the name `ancho` twips wide under `titulo`),
// shown empty until the rows arrive.
void Prepara(Rejilla* grid, Celdas& celdas, const QString& titulo, int ancho);

// The rows that the procedure just run left in Rs, a code and a name each.
void Llena(Module1& m, Rejilla* grid, Celdas& celdas, const QString& campoCodigo, const QString& campoNombre);

} // namespace Listas
