// The catalogue screens, for the sessions of the programs that link them.
#include "bancos.h"
#include "bancos_zelle.h"
#include "clientes.h"
#include "conceptos.h"
#include "form_servicios.h"
#include "proveedores.h"
#include "sesion.h"

static const Pruebas::Pantallas catalogos([](MDIForm1& p) {
    Pruebas::registrar<BANCOS>(p, "BANCOS");
    Pruebas::registrar<BANCOS_ZELLE>(p, "BANCOS_ZELLE");
    Pruebas::registrar<Clientes>(p, "Clientes");
    Pruebas::registrar<Proveedores>(p, "Proveedores");
    Pruebas::registrar<CONCEPTOS>(p, "CONCEPTOS");
    Pruebas::registrar<Form_SERVICIOS>(p, "Form_SERVICIOS");
});
