#pragma once
// The frame of the program: the main window with its background picture and
// its menu tree. Every working screen opens as a child inside it; a screen
// that is already open comes to the front.
#include <QHash>
#include <QMainWindow>
#include <QPointer>
#include <functional>

class Module1;
class Pantalla;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QAction;

class MDIForm1 : public QMainWindow {
    Q_OBJECT
public:
    explicit MDIForm1(Module1& m);

    using FabricaPantalla = std::function<Pantalla*(Module1&, MDIForm1&)>;
    // Makes a screen known by its name, so that its menu entry opens it.
    void Registrar(const QString& nombrePantalla, FabricaPantalla fabrica);
    // Opens the screen, or brings it to the front when it is open already.
    Pantalla* Mostrar(const QString& nombrePantalla);
    // The open screen of that name, if any.
    Pantalla* Abierta(const QString& nombrePantalla) const;

    // The four working menus, switched together by the access code.
    void Habilita_Menus(bool habilitados);

    QMenu* menu(const QString& nombre) const;
    QAction* entrada(const QString& nombre) const;
    QMdiArea* area() const { return area_; }

    // The desktop's calculator, started on its own.
    void Abre_Calculadora();

private:
    void activada(QMdiSubWindow* ventana);

    Module1& m;
    QMdiArea* area_;
    QHash<QString, QMenu*> menus_;
    QHash<QString, QAction*> entradas_;
    QHash<QString, FabricaPantalla> fabricas_;
    QHash<QString, QPointer<Pantalla>> abiertas_;
    QPointer<QMdiSubWindow> ultimaActiva_;
};
