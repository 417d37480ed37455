// The entry screens, for the sessions of the programs that link them.
#include "form1.h"
#include "movimientos.h"
#include "sesion.h"

static const Pruebas::Pantallas captura([](MDIForm1& p) {
    Pruebas::registrar<Movimientos>(p, "Movimientos");
    Pruebas::registrar<Form1>(p, "Form1");
});
