// The consoles, for the sessions of the programs that link them.
#include "f5_usdt.h"
#include "form2.h"
#include "form2_pago.h"
#include "sesion.h"

static const Pruebas::Pantallas consolas([](MDIForm1& p) {
    Pruebas::registrar<Form2>(p, "Form2");
    Pruebas::registrar<Form2_Pago>(p, "Form2_Pago");
    Pruebas::registrar<F5_USDT>(p, "F5_USDT");
});
