#pragma once
// The screen the program starts with: it opens the one connection, brings the
// server's parameters and the reference cache, and waits for the access code.
// Only a valid code switches on the working menus.
#include "pantalla.h"

#include <cstdint>

class QLineEdit;

class LOGIN : public Pantalla {
    Q_OBJECT
public:
    LOGIN(Module1& m, MDIForm1& principal);

    void Form_Load() override;
    void Form_Activate() override;

    // Reloads the parameters and the whole reference cache; the consoles and the
    // rate panel call it after a change. It touches no control of this screen.
    static void Carga_Parametros(Module1& m);

    QLineEdit* Text1;
    int16_t Intentos = 0;

    static const QString Version;

private:
    // The main window, its menus, this screen and its black box on view.
    void Pinta_Antes_De_Conectar();
    void Conectar();
    void Valida_Clave();
    void fondoTexto(const QColor& color);
    // Sets this machine's clock to the server's; a refusal is silent.
    void Pone_Hora();
};
