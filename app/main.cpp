#include "arranque.h"

int main(int argc, char** argv)
{
    // --help and --version answer before the application object, which needs a display.
    if (const int estado = Responde_Opciones(argc, argv); estado >= 0)
        return estado;
    Aplicacion app(argc, argv);
    return Ejecutar_Programa(app, Lee_Despliegue());
}
