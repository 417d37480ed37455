#pragma once
// Opens a screen through its menu entry (its key), as the operator does, and
// gives the screen that stands open under its name.
#include "sesion.h"

#include <QAction>
#include <QCoreApplication>

template <class T> T* abrirPorMenu(SesionDePrueba& s, const char* entrada, const char* pantalla)
{
    s.principal->entrada(QString::fromLatin1(entrada))->trigger();
    QCoreApplication::processEvents();
    return static_cast<T*>(s.principal->Abierta(QString::fromLatin1(pantalla)));
}
