#include "arranque.h"

int main(int argc, char** argv)
{
    Aplicacion app(argc, argv);
    return Ejecutar_Programa(app, Lee_Despliegue());
}
