#pragma once
// The printed report of a statistics screen: the business's name, the period
// and the filters, the table of the days (or months) with its totals line,
// the chart of the period, and the tables of providers, clients, banks and
// services, each as its grid shows it. Every page ends with "Página N de M";
// a table that runs on to the next page repeats its headings there.
//
// The document is built apart from any dialog: the screen shows it first in
// Qt's print preview, from which the operator prints it or saves it as PDF;
// tests print it straight to a PDF file.
#include <QString>

#include <functional>
#include <memory>

class CALCULOS01;
class QPrinter;
class QTextDocument;
struct Despliegue;

namespace Informe {

// The name atop the reports: the setting informe/titulo, else the web
// address of the receipts, else "Control de Pagos".
QString Titulo(const Despliegue& despliegue);

// The report of the figures the screen shows now.
std::unique_ptr<QTextDocument> Documento(const CALCULOS01& pantalla, const QString& titulo);

// Prints the document on the printer's pages, numbered at their foot; gives
// the number of pages, 0 when the printer could not start.
int Imprimir(const QTextDocument& documento, QPrinter& impresora);

// The preview of the report, with its printer set for an A4 page.
void Mostrar(CALCULOS01& pantalla, const QString& titulo);

// What Mostrar does with the document instead of the preview dialog (tests);
// an empty function puts the dialog back.
using Vista = std::function<void(const QTextDocument&)>;
void Reemplazar(Vista vista);

} // namespace Informe
