#include "form2.h"

Form2::Form2(Module1& m, MDIForm1& principal)
    : Consola(m, principal, QStringLiteral("Form2"), QStringLiteral("Form2 :       ACTUALIZACIONES Y CONSULTAS"))
{
}
