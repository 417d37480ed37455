// Every screen, registered the way the program registers them.
#include "arranque.h"
#include "sesion.h"

static const Pruebas::Pantallas programa(Registra_Pantallas);
