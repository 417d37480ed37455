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

    // The elements of Label1.
    enum Rotulo : int { lblGuardado = 0, lblAhora, lblCabezas, lblDolar };
    // The wallets, as Text3 counts them; they are also the codes of their
    // services. Text2 counts them from 0: the stored price of a wallet b is
    // Text2[b - 1].
    enum Billetera : int { bTrumin = 1, bZelle, bZinli, bAmazon };

    QMap<int, QLabel*> Label1;
    QLineEdit* Text1;            // the dollar of the day
    QMap<int, QLineEdit*> Text2; // the stored prices
    QMap<int, QLineEdit*> Text3; // the new prices
    QPushButton* Actualizar;
    QPushButton* SALIR;
};
