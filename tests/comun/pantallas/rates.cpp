// The rate screens, for the sessions of the programs that link them.
#include "dolar.h"
#include "dolar_new.h"
#include "new_dolar.h"
#include "servicios_usdt.h"
#include "sesion.h"

static const Pruebas::Pantallas tasas([](MDIForm1& p) {
    Pruebas::registrar<NEW_DOLAR>(p, "NEW_DOLAR");
    Pruebas::registrar<SERVICIOS_USDT>(p, "SERVICIOS_USDT");
    Pruebas::registrar<Dolar>(p, "Dolar");
    Pruebas::registrar<DOLAR_NEW>(p, "DOLAR_NEW");
});
