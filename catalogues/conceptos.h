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

    void Carga_Grid() override;
    void Procesar_Click();
};
