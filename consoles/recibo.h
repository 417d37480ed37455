#pragma once
// The collection receipt ("Recibo de Cobro") of one paid transaction, printed
// from the consoles. The job goes to the receipt printer of the deployment;
// without one, to the program's own PDF printer, which writes it to the fixed
// origin name in the receipts folder, where a virtual printer would have left
// it. COPIAR then copies it to a file named after the receipt.
//
// The transaction comes in the session's receipt fields: Rec_Fecha (yyyymmdd),
// Rec_Secuencia, Rec_Operadora (which head), Nom_Cliente; the concept from
// Cod_Concepto and the amount as the console's cell shows it in Rec_Monto.
#include <QString>
#include <cstdint>

class Module1;
class QPainter;

class Recibo {
public:
    explicit Recibo(Module1& m);

    // The printer that a deployment without a receipt printer uses: the program
    // writes the PDF itself.
    static const QString ImpresoraIntegrada;

    QString Impresora;        // the receipt printer at the last test
    bool Es_PDF = true;       // a PDF receipt, or an XPS one
    int16_t Cod_Concepto = 0; // the concept typed in the console
    QString Rec_Monto;        // the amount received, as its cell shows it
    QString Recibo_Nombre;    // receipt number + "  " + client
    QString Recibo_Origen;    // where the printer leaves the job
    QString Recibo_Destino;   // the named copy

    // The receipt printer's name fits the pattern ("*PDF*", "*XPS*"), capitals
    // as written. When it does not, the operator is told and the answer is false.
    bool Impresora_Es(const QString& patron);

    // yymmdd of the date and the sequence in "000": 2411050012 for 20241105, 12.
    QString Numero() const;

    // Draws the receipt, ends the job and sets the paths of the file and its copy.
    void EMITIR_RECIBO();
    // The lines of the receipt from the top of the page, each under the last.
    void DIBUJAR_RECIBO(QPainter& p);
    // Copies the printed file over its named copy; without the file, the
    // run-time failure "No se ha encontrado el archivo".
    void COPIAR();

private:
    QString carpeta() const;

    Module1& m;
};
