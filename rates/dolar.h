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

    QMap<int, QLabel*> Label1;   // 0 the stored price's moment, 1 this moment
    QMap<int, QLineEdit*> Text2; // 0 the stored price, 1 the new one
    QPushButton* Actualizar;
};
