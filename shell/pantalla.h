#pragma once
// A working screen: a child window of the main window with its fixed place
// and size. The load only places it; its work starts at activation, which
// comes each time it becomes the active screen.
#include <QWidget>

class Module1;
class MDIForm1;
class QMdiSubWindow;

class Pantalla : public QWidget {
    Q_OBJECT
public:
    Pantalla(Module1& m, MDIForm1& principal, const QString& nombre);

    // Runs once, when the screen is opened: its fixed place and size.
    virtual void Form_Load() {}
    // Runs when the screen becomes the active child window.
    virtual void Form_Activate() {}
    // Places the screen inside the main window, in twips.
    void Colocar(int top, int left, int width, int height);
    void Tamano(int width, int height);
    // SALIR: the screen goes away, with no question and no saving.
    void Unload();
    QMdiSubWindow* ventana() const;

    // Twips to pixels: 15 twips to a pixel.
    static int px(int twips) { return twips / 15; }

    // The hourglass around a longer load or walk.
    static void Reloj_De_Arena(bool puesto);

protected:
    Module1& m;
    MDIForm1& principal;
};
