#pragma once
// "Proveedores (grupos)": the providers who deliver the bolivars, each with a
// group key, the share of the gain the business keeps, a commission and the
// gift balance the consoles move. Footers total the gift balances. Changes
// do not reload the cache: the entry screens see them at the next full load.
#include "catalogo.h"

class Proveedores : public Catalogo {
    Q_OBJECT
public:
    QList<Valor> Valores_Modificar(int fila) override;
    Proveedores(Module1& m, MDIForm1& principal);

    enum Columna : int {
        colCodigo = 0,
        colDescripcion,
        colClave, // the group key
        colMod,   // the change mark
        colGanancia,
        colComision,
        colRegalo,
        colUltRegalo, // written only for a last gift above 0; an edit here goes nowhere
    };
    // The elements of Text1: each field with its caption.
    enum Campo : int { rotCodigo = 0, txtCodigo, rotDescripcion, txtDescripcion, txtClave, rotClave };

    void Carga_Grid() override;
    void INCLUIR_Click();
    void Procesar_Click();

    double Total_Regalo = 0;
    double Total_Ult_Regalo = 0;

protected:
    void Fila_Leida(int fila) override;
};
