#pragma once
// "CONCEPTOS RECIBOS DE PAGO": the texts a payment receipt can name as its
// concept. The field for a new concept stands open all the time; names are
// changed in the grid. Both reload the cache, so a receipt offers the new
// concept at once.
#include "catalogo.h"

class CONCEPTOS : public Catalogo {
    Q_OBJECT
public:
    CONCEPTOS(Module1& m, MDIForm1& principal);

    // colMarca is the hidden change mark.
    enum Columna : int { colCodigo = 0, colDescripcion, colMarca };
    // The elements of Text1: the new concept and its caption.
    enum Campo : int { rotConcepto = 2, txtConcepto = 3 };

    void Carga_Grid() override;
    void Procesar_Click();
};
