#pragma once
// "Bancos": the Venezuelan banks through which payments leave. Banks are only
// added, with the code the operator types; the list cannot be edited, and a
// new bank reaches the other screens at the next full load of the cache.
#include "catalogo.h"

class BANCOS : public Catalogo {
    Q_OBJECT
public:
    BANCOS(Module1& m, MDIForm1& principal);

    void INCLUIR_Click();
    void Procesar_Click();
};
