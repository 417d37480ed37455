#include "pantalla.h"

#include <QApplication>
#include <QMdiSubWindow>

Pantalla::Pantalla(Module1& modulo, MDIForm1& p, const QString& nombre) : m(modulo), principal(p)
{
    setObjectName(nombre);
    setAccessibleName(nombre);
    setAttribute(Qt::WA_DeleteOnClose);
}

QMdiSubWindow* Pantalla::ventana() const { return qobject_cast<QMdiSubWindow*>(parentWidget()); }

void Pantalla::Colocar(int top, int left, int width, int height)
{
    QWidget* w = ventana() ? static_cast<QWidget*>(ventana()) : this;
    w->setGeometry(px(left), px(top), px(width), px(height));
}

void Pantalla::Tamano(int width, int height)
{
    QWidget* w = ventana() ? static_cast<QWidget*>(ventana()) : this;
    w->resize(px(width), px(height));
}

void Pantalla::Unload()
{
    if (auto* v = ventana())
        v->close();
    else
        close();
}

void Pantalla::Reloj_De_Arena(bool puesto)
{
    if (puesto)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}
