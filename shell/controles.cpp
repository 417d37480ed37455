#include "controles.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

namespace Controles {

namespace {

class FiltroEnter : public QObject {
public:
    FiltroEnter(QObject* campo, std::function<void()> accion, bool quitar)
        : QObject(campo), accion_(std::move(accion)), quitar_(quitar)
    {
    }

protected:
    bool eventFilter(QObject*, QEvent* e) override
    {
        if (e->type() != QEvent::KeyPress)
            return false;
        const int tecla = static_cast<QKeyEvent*>(e)->key();
        if (tecla != Qt::Key_Return && tecla != Qt::Key_Enter)
            return false;
        accion_();
        return quitar_;
    }

private:
    std::function<void()> accion_;
    bool quitar_;
};

class FiltroFoco : public QObject {
public:
    explicit FiltroFoco(QLineEdit* campo) : QObject(campo) {}

protected:
    bool eventFilter(QObject* o, QEvent* e) override
    {
        if (e->type() == QEvent::FocusIn) {
            // after the focus change has settled, or a mouse click would undo the selection
            auto* campo = static_cast<QLineEdit*>(o);
            QTimer::singleShot(0, campo, [campo] { campo->selectAll(); });
        }
        return false;
    }
};

// Enter on a focused push button clicks it. Buttons that are a dialog's
// default or auto-default take Enter already and are left to it.
class FiltroBotones : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* o, QEvent* e) override
    {
        if (e->type() != QEvent::KeyPress)
            return false;
        auto* boton = qobject_cast<QPushButton*>(o);
        if (!boton || boton->autoDefault() || boton->isDefault() || !boton->isEnabled())
            return false;
        const auto* tecla = static_cast<QKeyEvent*>(e);
        if ((tecla->key() != Qt::Key_Return && tecla->key() != Qt::Key_Enter) || tecla->isAutoRepeat())
            return false;
        boton->click();
        return true;
    }
};

} // namespace

void EnterComoEspacio()
{
    static QPointer<QObject> filtro; // gone with the application that owns it
    if (filtro || !qApp)
        return;
    filtro = new FiltroBotones(qApp);
    qApp->installEventFilter(filtro);
}

void AlPulsarEnter(QWidget* campo, std::function<void()> accion, bool quitarTecla)
{
    campo->installEventFilter(new FiltroEnter(campo, std::move(accion), quitarTecla));
}

void SeleccionarAlEnfocar(QLineEdit* campo) { campo->installEventFilter(new FiltroFoco(campo)); }

void Nombrar(QWidget* control, const QString& nombre, const QString& accesible)
{
    control->setObjectName(nombre);
    control->setAccessibleName(accesible.trimmed().isEmpty() ? nombre : accesible.trimmed());
}

void Nombrar(QWidget* control, const QString& arreglo, int indice, const QString& accesible)
{
    Nombrar(control, QStringLiteral("%1(%2)").arg(arreglo).arg(indice), accesible);
}

QPushButton* Boton(QWidget* padre, const QString& nombre, const QString& titulo, int x, int y, int w, int h)
{
    auto* b = new QPushButton(titulo, padre);
    b->setGeometry(x, y, w, h);
    Nombrar(b, nombre, titulo);
    return b;
}

} // namespace Controles
