// The statistics screens, for the sessions of the programs that link them.
#include "calculos01.h"
#include "calculos01_usdt.h"
#include "resumen_mensual.h"
#include "sesion.h"

static const Pruebas::Pantallas estadisticas([](MDIForm1& p) {
    Pruebas::registrar<CALCULOS01>(p, "CALCULOS01");
    Pruebas::registrar<Resumen_mensual>(p, "Resumen_mensual");
    Pruebas::registrar<CALCULOS01_USDT>(p, "CALCULOS01_USDT");
    Pruebas::registrar<RESUMEN_MENSUAL_USDT>(p, "RESUMEN_MENSUAL_USDT");
});
