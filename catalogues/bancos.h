#pragma once
// "Bancos": the Venezuelan banks through which payments leave. Banks are only
// added, with the code the operator types; the list cannot be edited, and a
// new bank reaches the other screens at the next full load of the cache.
#include "catalogo.h"

class BANCOS : public Catalogo {
    Q_OBJECT
public:
    BANCOS(Module1& m, MDIForm1& principal);

    enum Columna : int { colCodigo = 0, colDescripcion };
    // The elements of Text1: each field with its caption before it.
    enum Campo : int { rotCodigo = 0, txtCodigo, rotDescripcion, txtDescripcion };

    void INCLUIR_Click();
    void Procesar_Click();
};
