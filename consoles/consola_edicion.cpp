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
    const bool cifra = c == colEnvio || c == colRecibido || c == colEstimado || c == colReferencia || c == colFactor;
    if (!cifra)
        GRID->Update();
    const int i = GRID->Bookmark();
    m.I = i;
    // Any edit marks the row for the next save, changed or not.
    Celdas(i, colMarca) = QStringLiteral("1");
    GRID->Update();

    switch (c) {
    case colSel:
        // A paid row has no estimate and counts as 0.
        Suma_Sel = Celdas(i, colSel) == -1 ? CLng(Suma_Sel + Num(i, colEstimado)) : CLng(Suma_Sel - Num(i, colEstimado));
        Text5->setText(Format(double(Suma_Sel), Formato_Suma()));
        break;
    case colCodBanco: {
        const QString codigo = Txt(i, colCodBanco);
        if (codigo == QLatin1String("7777"))
            Banco_Devolucion(i);
        else if (codigo == QLatin1String("8888"))
            Banco_Reverso(i);
        else
            Banco_Pago(i, codigo);
        return;
    }
    case colCodCliente:
        Celdas(i, colCliente) = m.Nombre_Cliente(CInt(Num(i, colCodCliente)));
        Reenlaza();
        break;
    case colCodProveedor:
        Celdas(i, colProveedor) = m.Nombre_Proveedor(CInt(Num(i, colCodProveedor)));
        Reenlaza();
        GRID->setCol(colCodBanco);
        break;
    default:
        break;
    }

    if (cifra) {
        Celdas(i, colMarca) = QStringLiteral("1");
        GRID->Update();
    }
    switch (c) {
    case colRecibido: {
        // Either decimal mark may be typed.
        Celdas(i, colRecibido) = Txt(i, colRecibido).replace(QLatin1Char('.'), QLatin1Char(','));
        Celdas(i, colRecibido) = Format(Celdas(i, colRecibido), QStringLiteral("###0.00"));
        const float bs = CSng(Num(i, colRecibido) * double(m.Dolar_Actual));
        Celdas(i, colEstimado) = Format(Fix(bs), QStringLiteral("###,##0"));
        Reenlaza();
        break;
    }
    case colFactor: {
        Celdas(i, colFactor) = Txt(i, colFactor).replace(QLatin1Char('.'), QLatin1Char(','));
        const double bs = Num(i, colCodServicio) < 50 ? Int(Num(i, colFactor) * Num(i, colRecibido))
                                                      : Num(i, colFactor) * Num(i, colEnvio);
        Celdas(i, colEstimado) = Format(bs, QStringLiteral("###,##0.00"));
        Reenlaza();
        GRID->setCol(colCodBanco);
        break;
    }
    case colCodServicio:
        Servicio_Editado(i);
        break;
    default:
        break;
    }
}

void Consola::Servicio_Editado(int i)
{
    const double servicio = Num(i, colCodServicio);
    if (servicio <= 100)
        Celdas(i, colServicio) = m.Servicios_T(long(CInt(servicio)))[2];
    Reenlaza();
    GRID->setCol(colCodServicio);
}

void Consola::Banco_Devolucion(int i)
{
    Celdas(i, colBanco) = QStringLiteral("Devoluciön");
    Celdas(i, colReferencia) = QString();
    Celdas(i, colPagado) = QStringLiteral("0");
    Celdas(i, colPorcentaje) = QStringLiteral("0");
    Celdas(i, colG2) = QStringLiteral("0");
    Reenlaza();
}

void Consola::A_No_Pagada(int i)
{
    // Back to unpaid: what was paid is the estimate again, and all of what
    // was received counts as gain until the row is paid anew.
    Celdas(i, colEstimado) = Celdas(i, colPagado);
    for (int c : {colProveedor, colCodBanco, colBanco, colReferencia})
        Celdas(i, c) = QString();
    Celdas(i, colPagado) = QStringLiteral("0");
    Celdas(i, colPorcentaje) = QStringLiteral("100");
    for (int c : {colG2, colG1, colG2Oculta})
        Celdas(i, c) = Celdas(i, colRecibido);
    Celdas(i, colG3) = QStringLiteral("0");
}

void Consola::Banco_Reverso(int i)
{
    A_No_Pagada(i);
    Celdas(i, colFechaPago) = QString();
    Celdas(i, colHoraPago) = QString();
    for (int c : {colRegalo, colDolar1, colDolar2})
        Celdas(i, c) = QStringLiteral("0");
    // Read after the gift cell was cleared: the statement takes back nothing.
    Regalo_Row = Num(i, colRegalo);
    m.SQL = QStringLiteral(" UPDATE proveedor SET ") + QStringLiteral(" regalo = regalo -  '") + Str(Regalo_Row) +
            QStringLiteral("' ") + QStringLiteral(" WHERE C_proveedor =  '") + Txt(i, colCodProveedor) + QStringLiteral("'");
    m.SQL.replace(QLatin1Char(','), QLatin1Char('.'));
    m.Conexion.Execute(m.SQL);
    Celdas(i, colHoraPago) = QString();
    Celdas(i, colCodProveedor) = QStringLiteral("0000");
    Reenlaza();
}

bool Consola::Banco_Registrado(int i, const QString& codigo)
{
    Celdas(i, colBanco) = m.Nombre_Banco(codigo);
    if (Txt(i, colBanco) == codigo || !EsNumerico(codigo)) {
        MsgBox(QStringLiteral("Error : Banco no registrado"), Mensajes::vbCritical);
        Celdas(i, colBanco) = QString();
        Celdas(i, colCodBanco) = QString();
        Reenlaza();
        GRID->setFocus();
        GRID->setCol(colCodBanco);
        GRID->setBookmark(FilaI());
        return false;
    }
    return true;
}

void Consola::Banco_Pago(int i, const QString& codigo)
{
    if (!Banco_Registrado(i, codigo))
        return;
    Tipo_Serv = CInt(Num(i, colCodServicio));
    const float bs = Tipo_Serv < 50 ? CSng(Num(i, colRecibido) * Num(i, colFactor)) : CSng(Num(i, colEnvio) * Num(i, colFactor));
    Celdas(i, colPagado) = Format(Int(bs), QStringLiteral("###,##0.00"));
    Monto_Texto = Txt(i, colEstimado).remove(QLatin1Char('.'));
    Monto_Calc = CDbl(Monto_Texto);
    CALCULA_PORCENTAJE(Monto_Calc, Tipo_Serv);
    Celdas(i, colPorcentaje) = Format(double(Porcentaje), QStringLiteral("##0.00"));
    Celdas(i, colG2) = Format(Num(i, colRecibido) * Num(i, colPorcentaje) / 100, QStringLiteral("##0.00"));
    Celdas(i, colG1) = Celdas(i, colG2);
    Celdas(i, colG2Oculta) = Celdas(i, colG2);
    Celdas(i, colEstimado) = QString();
    Reenlaza();
    GRID->setCol(colReferencia);
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
    Celdas(fila, colSel) = Celdas(fila, colSel) == -1 ? 0 : -1;
    GRID_AfterColEdit(colSel);
    GRID->Refresh();
}

bool Consola::eventFilter(QObject* objeto, QEvent* evento)
{
    // The space bar ticks the row under the cursor, as a click on its "Sel".
    if (objeto == GRID->vista() && evento->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(evento)->key() == Qt::Key_Space && GRID->Col() == colSel && GRID->Bookmark() >= 0) {
        Marcar(GRID->Bookmark());
        return true;
    }
    if (objeto == Text6 && evento->type() == QEvent::FocusOut)
        Text6_LostFocus();
    return Pantalla::eventFilter(objeto, evento);
}
