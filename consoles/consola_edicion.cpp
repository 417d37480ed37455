// The console's after-edit rules: what an edited cell does to its row.
#include "consola.h"
#include "consola_comun.h"
#include "controles.h"
#include "dialogo.h"
#include "fallo.h"
#include "formato.h"
#include "login.h"
#include "mdiform1.h"
#include "mensajes.h"
#include "module1.h"
#include "numeros.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFontMetrics>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QTableView>

#include <cmath>

using namespace Numeros;
using Mensajes::MsgBox;
using namespace consola;

// ------------------------------------------------------------------ cell edits

void Consola::GRID_AfterColEdit(int c)
{
    m.K = c;
    const bool cifra = c == 4 || c == 5 || c == 8 || c == 11 || c == 16;
    if (!cifra)
        GRID->Update();
    const int i = GRID->Bookmark();
    m.I = i;
    // Any edit marks the row for the next save, changed or not.
    Celdas(i, 12) = QStringLiteral("1");
    GRID->Update();

    switch (c) {
    case 17:
        // A paid row has no estimate and counts as 0.
        Suma_Sel = Celdas(i, 17) == -1 ? CLng(Suma_Sel + Num(i, 8)) : CLng(Suma_Sel - Num(i, 8));
        Text5->setText(Format(double(Suma_Sel), Formato_Suma()));
        break;
    case 9: {
        const QString codigo = Txt(i, 9);
        if (codigo == QLatin1String("7777"))
            Banco_Devolucion(i);
        else if (codigo == QLatin1String("8888"))
            Banco_Reverso(i);
        else
            Banco_Pago(i, codigo);
        return;
    }
    case 2:
        Celdas(i, 3) = m.Nombre_Cliente(CInt(Num(i, 2)));
        Reenlaza();
        break;
    case 6:
        Celdas(i, 7) = m.Nombre_Proveedor(CInt(Num(i, 6)));
        Reenlaza();
        GRID->setCol(9);
        break;
    default:
        break;
    }

    if (cifra) {
        Celdas(i, 12) = QStringLiteral("1");
        GRID->Update();
    }
    switch (c) {
    case 5: {
        // Either decimal mark may be typed.
        Celdas(i, 5) = Txt(i, 5).replace(QLatin1Char('.'), QLatin1Char(','));
        Celdas(i, 5) = Format(Celdas(i, 5), QStringLiteral("###0.00"));
        const float bs = CSng(Num(i, 5) * double(m.Dolar_Actual));
        Celdas(i, 8) = Format(Fix(bs), QStringLiteral("###,##0"));
        Reenlaza();
        break;
    }
    case 16: {
        Celdas(i, 16) = Txt(i, 16).replace(QLatin1Char('.'), QLatin1Char(','));
        const double bs = Num(i, 18) < 50 ? Int(Num(i, 16) * Num(i, 5)) : Num(i, 16) * Num(i, 4);
        Celdas(i, 8) = Format(bs, QStringLiteral("###,##0.00"));
        Reenlaza();
        GRID->setCol(9);
        break;
    }
    case 18:
        Servicio_Editado(i);
        break;
    default:
        break;
    }
}

void Consola::Servicio_Editado(int i)
{
    const double servicio = Num(i, 18);
    if (servicio <= 100)
        Celdas(i, 19) = m.Servicios_T(long(CInt(servicio)))[2];
    Reenlaza();
    GRID->setCol(18);
}

void Consola::Banco_Devolucion(int i)
{
    Celdas(i, 10) = QStringLiteral("Devoluciön");
    Celdas(i, 11) = QString();
    Celdas(i, 15) = QStringLiteral("0");
    Celdas(i, 20) = QStringLiteral("0");
    Celdas(i, 21) = QStringLiteral("0");
    Reenlaza();
}

void Consola::A_No_Pagada(int i)
{
    // Back to unpaid: what was paid is the estimate again, and all of what
    // was received counts as gain until the row is paid anew.
    Celdas(i, 8) = Celdas(i, 15);
    for (int c : {7, 9, 10, 11})
        Celdas(i, c) = QString();
    Celdas(i, 15) = QStringLiteral("0");
    Celdas(i, 20) = QStringLiteral("100");
    for (int c : {21, 23, 24})
        Celdas(i, c) = Celdas(i, 5);
    Celdas(i, 25) = QStringLiteral("0");
}

void Consola::Banco_Reverso(int i)
{
    A_No_Pagada(i);
    Celdas(i, 26) = QString();
    Celdas(i, 27) = QString();
    for (int c : {28, 29, 30})
        Celdas(i, c) = QStringLiteral("0");
    // Read after the gift cell was cleared: the statement takes back nothing.
    Regalo_Row = Num(i, 28);
    m.SQL = QStringLiteral(" UPDATE proveedor SET ") + QStringLiteral(" regalo = regalo -  '") + Str(Regalo_Row) +
            QStringLiteral("' ") + QStringLiteral(" WHERE C_proveedor =  '") + Txt(i, 6) + QStringLiteral("'");
    m.SQL.replace(QLatin1Char(','), QLatin1Char('.'));
    m.Conexion.Execute(m.SQL);
    Celdas(i, 27) = QString();
    Celdas(i, 6) = QStringLiteral("0000");
    Reenlaza();
}

bool Consola::Banco_Registrado(int i, const QString& codigo)
{
    Celdas(i, 10) = m.Nombre_Banco(codigo);
    if (Txt(i, 10) == codigo || !EsNumerico(codigo)) {
        MsgBox(QStringLiteral("Error : Banco no registrado"), Mensajes::vbCritical);
        Celdas(i, 10) = QString();
        Celdas(i, 9) = QString();
        Reenlaza();
        GRID->setFocus();
        GRID->setCol(9);
        GRID->setBookmark(FilaI());
        return false;
    }
    return true;
}

void Consola::Banco_Pago(int i, const QString& codigo)
{
    if (!Banco_Registrado(i, codigo))
        return;
    Tipo_Serv = CInt(Num(i, 18));
    const float bs = Tipo_Serv < 50 ? CSng(Num(i, 5) * Num(i, 16)) : CSng(Num(i, 4) * Num(i, 16));
    Celdas(i, 15) = Format(Int(bs), QStringLiteral("###,##0.00"));
    Monto_Texto = Txt(i, 8).remove(QLatin1Char('.'));
    Monto_Calc = CDbl(Monto_Texto);
    CALCULA_PORCENTAJE(Monto_Calc, Tipo_Serv);
    Celdas(i, 20) = Format(double(Porcentaje), QStringLiteral("##0.00"));
    Celdas(i, 21) = Format(Num(i, 5) * Num(i, 20) / 100, QStringLiteral("##0.00"));
    Celdas(i, 23) = Celdas(i, 21);
    Celdas(i, 24) = Celdas(i, 21);
    Celdas(i, 8) = QString();
    Reenlaza();
    GRID->setCol(11);
}

void Consola::CALCULA_PORCENTAJE(double& Monto, int16_t& Servicio)
{
    Porcentaje = 0;
    float costo = 0;
    // The price of service 50 and up is the other way round from the
    // dollar conversion of the entry: 1 divides by the base price, 2 by the
    // service's own.
    if (Servicio < 50)
        costo = CSng(dividir(Monto, m.Compra_T(1)));
    if (Servicio >= 50 && m.Div_T(Servicio) == 1.0)
        costo = CSng(dividir(Monto, m.Compra_T(2)));
    if (Servicio >= 50 && m.Div_T(Servicio) == 2.0)
        costo = CSng(dividir(Monto, m.Compra_T(Servicio)));
    const float parte = CSng(dividir(costo, Num(FilaI(), 5)));
    Porcentaje = CSng(std::fabs(1.0 - double(parte)) * 100.0);
}

void Consola::Marcar(int fila)
{
    GRID->setBookmark(fila);
    Celdas(fila, 17) = Celdas(fila, 17) == -1 ? 0 : -1;
    GRID_AfterColEdit(17);
    GRID->Refresh();
}

bool Consola::eventFilter(QObject* objeto, QEvent* evento)
{
    // The space bar ticks the row under the cursor, as a click on its "Sel".
    if (objeto == GRID->vista() && evento->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(evento)->key() == Qt::Key_Space && GRID->Col() == 17 && GRID->Bookmark() >= 0) {
        Marcar(GRID->Bookmark());
        return true;
    }
    if (objeto == Text6 && evento->type() == QEvent::FocusOut)
        Text6_LostFocus();
    return Pantalla::eventFilter(objeto, evento);
}
