#pragma once
// "SERVICIOS_USDT": the USDT prices with their description, buy and sell
// price. A new row is created by its name alone (it prices no service until
// the rate panel ties it); a price change never touches the row's divide flag,
// which only the rate panel sets.
#include "catalogo.h"

#include <QMap>

class QLabel;

class SERVICIOS_USDT : public Catalogo {
    Q_OBJECT
public:
    SERVICIOS_USDT(Module1& m, MDIForm1& principal);

    void Form_Activate() override;
    void Carga_Grid() override;
    QList<Valor> Valores_Modificar(int fila) override;
    void Procesar_Click();
    void ACTUALIZAR_Click();

    // The columns of the grid; colMarca is the hidden change mark.
    enum Columna : int { colCodigo = 0, colDescripcion, colCompra, colVenta, colMarca };
    // The elements of Label1.
    enum Rotulo : int { lblAhora = 1, lblUltima = 2 };

    QLineEdit* Text2; // name of a new USDT service
    QLabel* uev;      // its caption
    QMap<int, QLabel*> Label1;
    QPushButton* ACTUALIZAR;

private:
    void Rotula_Ultima();
};
