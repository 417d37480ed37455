#pragma once
// "Dolar": the plain dollar screen. It shows the stored price of the dollar
// with its moment and stores a new one; the price typed becomes the entry
// screen's dollar for its estimates (Dolar_Actual).
#include "pantalla.h"

#include <QMap>

class QLabel;
class QLineEdit;
class QPushButton;

class Dolar : public Pantalla {
    Q_OBJECT
public:
    Dolar(Module1& m, MDIForm1& principal);

    void Form_Load() override;
    void Form_Activate() override;
    void Actualizar_Click();

    // The two lines of Label1 and Text2: the stored price with its moment,
    // the new price with this moment.
    enum Linea : int { lnGuardado = 0, lnNuevo = 1 };

    QMap<int, QLabel*> Label1;   // the moment of each line
    QMap<int, QLineEdit*> Text2; // the price of each line
    QPushButton* Actualizar;
};
