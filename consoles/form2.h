#pragma once
// "ACTUALIZACIONES Y CONSULTAS": the console of the transactions by their own
// date, the operators' main screen (F5, and "Ver transacciones del dia" of the
// entry screen). It is the console as Consola has it.
#include "consola.h"

class Form2 : public Consola {
    Q_OBJECT
public:
    Form2(Module1& m, MDIForm1& principal);
};
