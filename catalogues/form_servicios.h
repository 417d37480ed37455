#pragma once
// "Form_SERVICIOS": the wallet services, each with the percentage it takes,
// the decimals of its amounts, its way of calculation, the one-letter key
// typed on the entry screen and a status. The fields of a new service stand
// open; rows are changed in the grid. Every save reloads the cache.
#include "catalogo.h"

#include <QMap>

class QGroupBox;
class QRadioButton;

class Form_SERVICIOS : public Catalogo {
    Q_OBJECT
public:
    QList<Valor> Valores_Modificar(int fila) override;
    Form_SERVICIOS(Module1& m, MDIForm1& principal);

    enum Columna : int {
        colCodigo = 0,
        colDescripcion,
        colPorcentaje,
        colDecimales,
        colMarca, // the hidden change mark
        colSwCal,
        colLetra,
        colStatus,
    };
    // The elements of Text1: each field of a new service with its caption.
    enum Campo : int {
        rotPorcentaje = 0,
        txtPorcentaje,
        rotServicio,
        txtServicio,
        rotDecimales,
        txtDecimales,
        txtLetra,
        rotLetra
    };
    // The two boxes of Option1, by the way of calculation that each one
    // stores: 1 from the dollar, 2 from a USDT row.
    enum SwCalculo : int { swDolar = 1, swUsdt = 2 };

    void Carga_Grid() override;
    void MODIFICAR_Click() override;
    void Procesar_Click();

    QGroupBox* Frame1;
    QMap<int, QRadioButton*> Option1;
};
