#pragma once
// The export of the grids, from their context menu ("Exportar a hoja de
// cálculo...", Ctrl+E): the sheets a grid names (Rejilla::hojas) written to an
// Excel workbook, or its first grid to a text separated by semicolons.
//
// What a sheet holds is what the operator sees: the columns shown, in their
// order, under their captions, then the rows, then the line of footers in bold
// when the grid shows them. An amount goes as a number in the pattern of its
// screen ("#,##0.00"), a text that is a number in the business's form
// ("1.234,56", "-12,5") in a right-aligned column as a number with the
// grouping and decimals it shows, a date shown as dd/mm/yyyy as a date; a
// code with leading zeros ("0007") and any other text as the text shown.
//
// The text file is UTF-8 with a byte order mark, so that a spreadsheet reads
// its accents; ";" between fields, lines ended by CR LF; a field that holds
// ";", a quote or a line break goes between quotes, its quotes doubled;
// numbers with a decimal comma and no thousands marks ("1234,56").
#include "rejilla.h"

#include <QString>

#include <functional>
#include <vector>

class QWidget;

namespace Exportar {

// Writes the grids into a workbook, one sheet each; the reason of a failure
// in Spanish ("la carpeta no existe"), or an empty text.
QString Libro(const std::vector<HojaExportada>& hojas, const QString& archivo);
// Writes the grid as text separated by semicolons; the reason of a failure.
QString Texto_Separado(const Rejilla& rejilla, const QString& archivo);

// The names of the sheets as a workbook takes them: at most 31 characters,
// none of []:*?/\, none empty, no two alike.
std::vector<QString> Nombres_De_Hojas(const std::vector<QString>& nombres);

// Where to write, asked to the operator: the path chosen, empty when the
// operator cancels. A name ending in ".csv" is written as text, any other
// as a workbook. Tests replace it; an empty function puts Qt's back.
using Dialogo = std::function<QString(QWidget* padre, const QString& propuesto)>;
void Reemplazar(Dialogo dialogo);

// The export of the menu: asks where, with the grid's name for the file in
// the last folder used, writes, and remembers the folder. A failure is told
// in a message box and the work goes on. True when the file was written.
bool Exportar_Rejilla(const Rejilla& rejilla);

} // namespace Exportar
