#pragma once
// "Bancos Zelle": the banks behind the Zelle wallet. Names are changed in the
// grid; there is no add mode (its button stays, inert). A change reloads the
// cache, so the entry screen lists the new names at once.
#include "catalogo.h"

class BANCOS_ZELLE : public Catalogo {
    Q_OBJECT
public:
    BANCOS_ZELLE(Module1& m, MDIForm1& principal);

    // colMarca is the hidden change mark.
    enum Columna : int { colCodigo = 0, colDescripcion, colMarca };
};
