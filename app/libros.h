#pragma once
// The books before anyone types: with the embedded server, the database file
// is made (the demo at a new installation's default place only), checked for
// damage, brought up to this program's schema after a copy, and told when it
// cannot be written; with either server, what other accounts of the machine
// may read is told.
#include "despliegue.h"

#include <QDate>

// True when the program may go on to LOGIN; false when it must end (the
// operator has been told why).
bool Prepara_Base(const Despliegue& despliegue, const QDate& hoy);
