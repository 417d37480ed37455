#pragma once
// "DOLAR_NEW": the four wallet prices of the day (TRUMIN, ZELLE, ZINLI,
// AMAZON), derived from one typed dollar by the business's fixed factors and
// correctable one by one before they are stored. The stored prices become
// the cached amounts of services 1 to 4 at once.
#include "pantalla.h"

#include <QMap>

class QLabel;
class QLineEdit;
class QPushButton;

class DOLAR_NEW : public Pantalla {
    Q_OBJECT
public:
    DOLAR_NEW(Module1& m, MDIForm1& principal);

    void Form_Load() override;
    void Form_Activate() override;
    void Text1_Enter();
    void Actualizar_Click();

    QMap<int, QLabel*> Label1;   // 0 the stored prices' moment, 1 this moment, 2 heads, 3 caption of Text1
    QLineEdit* Text1;            // the dollar of the day
    QMap<int, QLineEdit*> Text2; // 0 to 3: the stored prices
    QMap<int, QLineEdit*> Text3; // 1 to 4: the new prices
    QPushButton* Actualizar;
    QPushButton* SALIR;
};
