#include "calculos01_usdt.h"
#include "formato.h"
#include "module1.h"

#include <QComboBox>
#include <QLineEdit>

CALCULOS01_USDT::CALCULOS01_USDT(Module1& modulo, MDIForm1& p) : CALCULOS01(modulo, p, QStringLiteral("CALCULOS01_USDT")) {}

// Ten times the height of the other screens: the window reaches below the
// main window's edge, as it always has.
void CALCULOS01_USDT::Form_Load()
{
    Colocar(10, 101, 20050, 98000);
    Cargado = false;
}

void CALCULOS01_USDT::Columnas_Usdt(CALCULOS01& p, int anchoCliente)
{
    p.GRID->Columns(CALCULOS01::colRecibido).setCaption(QStringLiteral("Enviado"));
    p.GRID2->Columns(CALCULOS01::grpNombre).setWidth(anchoCliente);
    p.GRID2->Columns(CALCULOS01::grpRecibido).setCaption(QStringLiteral("Enviado "));
    for (Rejilla* g : {p.GRID1, p.GRID4, p.GRID5}) {
        g->Columns(CALCULOS01::grpNombre).setWidth(2000);
        g->Columns(CALCULOS01::grpRecibido).setCaption(QStringLiteral("Enviado"));
    }
}

void CALCULOS01_USDT::Combo_Usdt(Module1& m, QComboBox* Combo1)
{
    Combo1->clear();
    Combo1->addItem(QStringLiteral("00 - TODOS"));
    for (int i = 50; i <= 99; ++i)
        if (!m.Servicios_T(i)[1].isEmpty())
            Combo1->addItem(Format(m.Servicios_T(i)[1], QStringLiteral("00")) + QStringLiteral(" - ") + m.Servicios_T(i)[2]);
}

RESUMEN_MENSUAL_USDT::RESUMEN_MENSUAL_USDT(Module1& modulo, MDIForm1& p)
    : Resumen_mensual(modulo, p, QStringLiteral("RESUMEN_MENSUAL_USDT"))
{
    // No input but the filters: the year is not shown either.
    for (QLineEdit* t : Text1)
        t->hide();
}

void RESUMEN_MENSUAL_USDT::Form_Load()
{
    Colocar(10, 101, 20050, 98000);
    Cargado = false;
}

void RESUMEN_MENSUAL_USDT::Ejecuta_Procedimiento() { Ejecuta({m.K, m.L}); }

void RESUMEN_MENSUAL_USDT::Porcentaje_Del_Ano()
{
    Porc_Gan = 0;
    if (Total_Recibido > 0)
        Porc_Gan = 100 * (Total_Gan / Total_Recibido);
}

void RESUMEN_MENSUAL_USDT::Retoca_Columnas()
{
    Resumen_mensual::Retoca_Columnas();
    CALCULOS01_USDT::Columnas_Usdt(*this, 3000);
}
