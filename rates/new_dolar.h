#pragma once
// "PRECIO DEL DOLAR": the rate panel where the day's prices become the rate of
// every service. Left, the services with their stored rate; "Calcular Valores"
// derives the new rate of each one, from the reference dollar (services priced
// from the dollar, cut to their decimals) or from the USDT prices at the right
// (services tied to a USDT row); the operator may correct any amount, and
// "Actualizar Valores" stores them with the dollar and reloads the whole
// client, so that consoles and entry work with the new rates at once. The USDT
// prices are edited in their own grid, and the providers' notifications open
// over the grids.
#include "celdas.h"
#include "pantalla.h"

#include <QMap>

class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class Rejilla;

class NEW_DOLAR : public Pantalla {
    Q_OBJECT
public:
    NEW_DOLAR(Module1& m, MDIForm1& principal);

    void Form_Load() override;
    // Every activation reloads both grids: an uncommitted calculation is lost.
    void Form_Activate() override;

    // ---- service rates
    void Carga_Dolares();
    void Calcula_Valores();
    void Calcula_Montos();
    void Actualiza_Valores();
    // ---- USDT prices
    void Carga_USDT();
    void Modifica_USDT();
    void INGRESO_Click();
    // ---- notifications
    void Notifica_Click();
    void CIERRA_NOTI_Click();

    // ---- the columns of the three grids
    // GRID, the service rates. Only colMontoActual takes the focus: the
    // calculation writes it and the operator may correct it.
    enum Columna : int {
        colCodigo = 0,
        colServicio,
        colMontoAnterior,
        colPorcentaje,
        colMontoActual,
        colDecimales,
        colSwC, // 1: priced from the dollar; 2: from a USDT row
    };
    // GRID1, the USDT prices. usdtVenta travels with the row out of the
    // operator's sight (one twip wide); usdtMarca is the hidden change mark.
    enum ColumnaUsdt : int {
        usdtCodigo = 0,
        usdtDescripcion,
        usdtCompra,
        usdtVenta,
        usdtMarca,
        usdtEquivalencia, // the service that the row prices; above 49 only
        usdtDivide,       // 1 base over price, 2 price over base
    };
    // GRID2, the notifications; notiOculta is hidden and never loaded.
    enum ColumnaNoti : int { notiProveedor = 0, notiNombre, notiTitulo, notiMensaje, notiFecha, notiTipo, notiLeida, notiOculta };
    // The elements of Label1 and of uev.
    enum Rotulo : int { lblUltima = 0, lblAhora = 1, lblDolar = 3 };
    enum RotuloUev : int { uevEquivalencia = 0, uevServicio = 2 };

    // ---- controls, by their design names
    QLineEdit* Text1;          // the reference dollar
    QLineEdit* Text2;          // name of a new USDT service
    QLineEdit* Text3;          // its equivalence code
    QMap<int, QLabel*> Label1; // last store, this moment, caption of Text1
    QMap<int, QLabel*> uev;    // captions of Text3 and Text2
    Rejilla* GRID;             // service rates
    Rejilla* GRID1;            // USDT prices
    Rejilla* GRID2;            // notifications
    QFrame* Frame1;            // holds GRID2; hidden until asked for
    QPushButton* CALCULOS;
    QPushButton* Procesar;
    QPushButton* INCLUIR;    // stands on the panel without an action
    QPushButton* ACTUALIZAR; // stands on the panel without an action
    QPushButton* MODIFICAR_USDT;
    QPushButton* INGRESO;
    QPushButton* Notifica;
    QPushButton* CIERRA_NOTI;
    QPushButton* SALIR;

    ::Celdas Celdas;  // behind GRID
    ::Celdas Celdas1; // behind GRID1
    ::Celdas Celdas2; // behind GRID2
    // Carries the reference dollar from the first USDT row to Text1.
    float Dolar_Usdt = 0;

private:
    void Prepara_Grid();
    void Prepara_Grid1();
    void Prepara_Grid2();
    void Rotula_Fechas();
    // INGRESO's checks of the equivalence code; K = 1 when it is refused.
    void Valida_Equivalencia_Libre();
    void Valida_Equivalencia_Existe();
    void Rechaza_Equivalencia(const QString& texto);
    double Equivalencia_Pedida() const;
    // The text with its decimal points turned into the comma that the
    // calculation and the procedures read.
    static QString Con_Coma(QString texto);
};
