// The panel's USDT prices: their grid, the changes typed in it, and a new
// USDT service tied to the service that it prices.
#include "new_dolar.h"
#include "formato.h"
#include "mensajes.h"
#include "module1.h"
#include "numeros.h"
#include "rejilla.h"

#include <QLineEdit>

using namespace Numeros;
using Mensajes::MsgBox;

void NEW_DOLAR::Prepara_Grid1()
{
    const auto d = Alineacion::Derecha, c = Alineacion::Centro, g = Alineacion::General;
    GRID1->Columns(usdtCodigo).setWidth(1000).setCaption(QStringLiteral("Codigo")).setAlignment(c).setAllowFocus(false);
    GRID1->Columns(usdtDescripcion).setWidth(2600).setCaption(QStringLiteral("Descripcion")).setAlignment(g);
    GRID1->Columns(usdtCompra).setWidth(1600).setCaption(QStringLiteral("Precio\rCompra")).setAlignment(d);
    GRID1->Columns(usdtVenta).setWidth(1).setCaption(QStringLiteral("Precio\rVenta")).setAlignment(d);
    GRID1->Columns(usdtMarca).setWidth(200).setCaption(QString()).setVisible(false).setAllowFocus(false);
    GRID1->Columns(usdtEquivalencia).setWidth(1000).setCaption(QStringLiteral("Equiv.")).setAlignment(c).setAllowFocus(false);
    GRID1->Columns(usdtDivide).setWidth(1000).setCaption(QStringLiteral("Divide")).setAlignment(c);
    for (int n = usdtCodigo; n <= usdtDivide; ++n)
        GRID1->Columns(n).setHeadAlignment(c);
    GRID1->setRowHeight(300);
    Celdas1.ReDim(-1, -1, 0, 0);
    GRID1->Array(Celdas1);
    GRID1->ReBind();
}

void NEW_DOLAR::Carga_USDT()
{
    Text2->clear();
    Text3->clear();
    Prepara_Grid1();
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_servicios_USDT"));
    m.Ejecuta_Comando();
    int i = -1;
    while (!m.Rs->Eof()) {
        ++i;
        Celdas1.ReDim(0, i, 0, usdtDivide);
        Celdas1(i, usdtCodigo) = Format(m.Rs->Fields(QStringLiteral("C_SERVIcio")), QStringLiteral("00"));
        Celdas1(i, usdtDescripcion) = Format(m.Rs->Fields(QStringLiteral("D_SERVIcio")), QStringLiteral("&"));
        Celdas1(i, usdtCompra) = Format(m.Rs->Fields(QStringLiteral("compra")), QStringLiteral("#0.0000"));
        Celdas1(i, usdtVenta) = Format(m.Rs->Fields(QStringLiteral("venta")), QStringLiteral("0.0000"));
        Celdas1(i, usdtMarca) = QStringLiteral("0");
        Celdas1(i, usdtEquivalencia) = Format(m.Rs->Fields(QStringLiteral("equivalencia")), QStringLiteral("0"));
        Celdas1(i, usdtDivide) = Format(m.Rs->Fields(QStringLiteral("div")), QStringLiteral("0"));
        m.Rs->MoveNext();
    }
    m.Cierra_Rs();
    GRID1->Array(Celdas1);
    GRID1->ReBind();
}

void NEW_DOLAR::Modifica_USDT()
{
    GRID1->Update();
    GRID1->Array(Celdas1);
    GRID1->ReBind();
    for (int i : Celdas1.Filas()) {
        if (!(Celdas1(i, usdtMarca) == -1))
            continue;
        m.Cierra_Rs();
        for (int col : {usdtCompra, usdtVenta})
            Celdas1(i, col) = Con_Coma(Celdas1(i, col).texto());
        // The two reference rows price no service.
        if (Celdas1(i, usdtCodigo).numero() < 3)
            Celdas1(i, usdtDivide) = 0;
        m.Prepara_Comando(QStringLiteral("TRU_MOD_servicios_USDT"));
        int n = 1;
        for (int col : {usdtCodigo, usdtDescripcion, usdtCompra, usdtVenta, usdtDivide})
            m.Comando.Parameters(n++) = Valor(Celdas1(i, col).texto().trimmed());
        m.Ejecuta_Comando();
    }
    m.Cierra_Rs();
    m.Fecha_Compraventas = m.reloj().toString(QStringLiteral("dd/MM/yyyy HH:mm:ss"));
    Carga_USDT();
}

double NEW_DOLAR::Equivalencia_Pedida() const
{
    // The whole part of the code as typed, with either decimal mark: 55.9 is 55.
    return Int(CDbl(Con_Coma(Text3->text())));
}

void NEW_DOLAR::Rechaza_Equivalencia(const QString& texto)
{
    MsgBox(texto, Mensajes::vbCritical);
    Text3->clear();
    Text3->setFocus();
    m.K = 1;
}

void NEW_DOLAR::Valida_Equivalencia_Libre()
{
    m.K = 0;
    const double pedida = Equivalencia_Pedida();
    for (int i : Celdas1.Filas()) {
        if (Int(Celdas1(i, usdtEquivalencia).numero()) == pedida) {
            Rechaza_Equivalencia(QStringLiteral(" ERROR : Código de equivalencia ya esta asignado"));
            return;
        }
    }
}

void NEW_DOLAR::Valida_Equivalencia_Existe()
{
    m.K = 0;
    const double pedida = Equivalencia_Pedida();
    int J = 0;
    bool directo = false;
    for (int i : Celdas.Filas()) {
        if (Int(Celdas(i, colCodigo).numero()) != pedida)
            continue;
        ++J;
        directo = directo || Celdas(i, colSwC) == 1;
    }
    if (J == 0)
        Rechaza_Equivalencia(QStringLiteral(" ERROR : Codigo de servicio equivalente no existe"));
    else if (directo)
        Rechaza_Equivalencia(QStringLiteral(" ERROR : No se puede asignar equivalencia a ese servicio, SW-C=1"));
}

void NEW_DOLAR::INGRESO_Click()
{
    if (Text2->text().isEmpty()) {
        MsgBox(QStringLiteral("Indique la Descripcipón del Servicio"), Mensajes::vbInformation);
        Text2->setFocus();
        return;
    }
    if (Text3->text().isEmpty()) {
        MsgBox(QStringLiteral("Indique codigo de equivalencia"), Mensajes::vbInformation);
        Text3->setFocus();
        return;
    }
    Valida_Equivalencia_Libre();
    if (!(m.K == 1))
        Valida_Equivalencia_Existe();
    if (m.K == 1)
        return;
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_IN_SERVICIOS_USDT"));
    m.Comando.Parameters(1) = Valor(Text2->text().toUpper());
    m.Comando.Parameters(2) = Valor(Equivalencia_Pedida());
    m.Ejecuta_Comando();
    Carga_USDT();
}
