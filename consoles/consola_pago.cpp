// The console's selection, payment and receipts.
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

// ------------------------------------------------------------------ selection and payment

void Consola::Fijar_Sin_Marcas()
{
    // Every unpaid row takes the price, ticked or not; nothing is summed.
    for (int i : Celdas.Filas()) {
        if (Celdas(i, colCodBanco).Len() != 0)
            continue;
        Text4->setText(Text4->text().replace(QLatin1Char('.'), QLatin1Char(',')));
        Celdas(i, colFactor) = Text4->text().trimmed();
    }
    Reenlaza();
}

void Consola::FIJAR_Click()
{
    Suma_Sel = 0;
    for (int i : Celdas.Filas()) {
        if (!(Celdas(i, colSel) == -1) || Celdas(i, colCodBanco).Len() != 0)
            continue;
        Text4->setText(Text4->text().replace(QLatin1Char('.'), QLatin1Char(',')));
        Celdas(i, colFactor) = Text4->text().trimmed();
        const double v = Num(i, colCodServicio) < 50 ? Num(i, colRecibido) * Num(i, colFactor)
                                                     : Num(i, colEnvio) * Num(i, colFactor);
        Celdas(i, colEstimado) = Format(Int(v), QStringLiteral("###,##0.00"));
        // The sum takes the product before the cut.
        Suma_Sel = CLng(Suma_Sel + v);
    }
    Text5->setText(Format(double(Suma_Sel), QStringLiteral("###,##0")));
    Reenlaza();
}

void Consola::Quitar_Marcas()
{
    for (int i : Celdas.Filas())
        Celdas(i, colSel) = 0;
}

void Consola::Rechaza_Seleccion(const QString& texto)
{
    MsgBox(texto, Mensajes::vbCritical);
    Quitar_Marcas();
    Reenlaza();
}

int Consola::Recorre_Marcadas(const std::function<bool(int)>& marcada)
{
    int j = 0;
    m.J = j;
    if (Celdas.Vacia()) {
        m.I = -1;
        MsgBox(QStringLiteral("Error : No hay información para procesar"), Mensajes::vbCritical);
        return 0;
    }
    for (int i : Celdas.Filas()) {
        m.I = i;
        if (Celdas(i, colSel) == -1) {
            if (!marcada(i))
                return 0;
            m.J = ++j;
        }
    }
    if (j == 0)
        MsgBox(QStringLiteral("Error : No selecciono información"), Mensajes::vbCritical);
    return j;
}

void Consola::Sumarizar_Click()
{
    m.Sel_Cuenta = 0;
    m.Sel_Total = 0;
    Suma_Sel = 0;
    const int j = Recorre_Marcadas([&](int i) {
        if (Celdas(i, colEstimado) == 0) {
            // A paid row among the ticked ones: nothing is paid, every tick goes.
            Rechaza_Seleccion(QStringLiteral("Error : conflicto en la selección. Hay movimientos pagados"));
            return false;
        }
        m.Sel_Total += Num(i, colEstimado);
        return true;
    });
    if (j == 0)
        return;
    m.Sel_Cuenta = j;
    m.Ref_Aceptado = false;
    Dialogo::Mostrar(m, this);
    if (m.Ref_Aceptado) {
        APLICAR_PAGO();
        Modo_Grabar = 1;
        GRABAR_MOVIMIENTOS();
    }
    Quitar_Marcas();
    Text5->setText(QStringLiteral("0"));
    Reenlaza();
}

void Consola::APLICAR_PAGO()
{
    for (int i : Celdas.Filas()) {
        if (!(Celdas(i, colSel) == -1))
            continue;
        m.I = i;
        Celdas(i, colCodProveedor) = m.Ref_Cod_Proveedor;
        Celdas(i, colProveedor) = m.Ref_Nombre_Proveedor;
        Celdas(i, colCodBanco) = m.Ref_Banco;
        Celdas(i, colBanco) = m.Ref_Nombre_Banco;
        Celdas(i, colReferencia) = m.Ref_Referencia;
        // The estimate becomes the payment.
        Celdas(i, colPagado) = Celdas(i, colEstimado);
        Celdas(i, colSel) = 0;
        Celdas(i, colTipoOp) = m.Ref_Opcion;
        Ganancia_Del_Pago(i);
    }
    Reenlaza();
}

void Consola::Ganancia_Del_Pago(int i)
{
    Monto_Texto = Txt(i, colEstimado).remove(QLatin1Char('.'));
    Monto_Calc = CDbl(Monto_Texto);
    Tipo_Serv = CInt(Num(i, colCodServicio));
    Celdas(i, colEstimado) = 0;
    CALCULA_PORCENTAJE(Monto_Calc, Tipo_Serv);
    Celdas(i, colPorcentaje) = Format(double(Porcentaje), QStringLiteral("##0.00"));
    // Only the batch payment adds this half cent to the percentage.
    Celdas(i, colG2) = Format(Num(i, colRecibido) * (double(Porcentaje) + 0.005) / 100, QStringLiteral("##0.00"));
}

void Consola::Check1_Click()
{
    if (!Check1->isChecked())
        return;
    principal.Mostrar(QStringLiteral("CONCEPTOS"));
    Check1->setChecked(false);
}

// ------------------------------------------------------------------ receipts

void Consola::Aviso(const QString& texto)
{
    Text7->setText(texto);
    Text7->setVisible(true);
    repaint();
    m.Espera(2);
    Text7->setVisible(false);
    repaint();
}

void Consola::Text6_Enter()
{
    if (Text6->text().isEmpty())
        return;
    m.Rec_Concepto = m.Nombre_Concepto(CInt(Fix(CDbl(Text6->text()))));
    // An unknown code comes back as itself: then there is no such concept.
    if (Text6->text() != m.Rec_Concepto) {
        Aviso(m.Rec_Concepto);
    } else {
        MsgBox(QStringLiteral("Error: Concepto no Existe"), Mensajes::vbCritical);
        Text6->clear();
        Text6->setFocus();
    }
}

void Consola::Text6_LostFocus()
{
    if (!Text6->text().isEmpty())
        recibo.Cod_Concepto = CInt(Fix(CDbl(Text6->text())));
}

void Consola::RECIBO_PDF_Click()
{
    if (!recibo.Impresora_Es(QStringLiteral("*PDF*")))
        return;
    recibo.Es_PDF = true;
    PREPARAR_RECIBO();
}

void Consola::RECIBO_XPS_Click()
{
    if (!recibo.Impresora_Es(QStringLiteral("*XPS*")))
        return;
    recibo.Es_PDF = false;
    PREPARAR_RECIBO();
}

void Consola::PREPARAR_RECIBO()
{
    m.Sel_Cuenta = 0;
    int fila = -1;
    const int j = Recorre_Marcadas([&](int i) {
        if (Num(i, colEstimado) > 0) {
            // An estimate still standing: the row is not paid.
            Rechaza_Seleccion(QStringLiteral("Error : La Transacción no esta pagada"));
            return false;
        }
        fila = i;
        return true;
    });
    if (j == 0)
        return;
    if (j > 1) {
        Rechaza_Seleccion(QStringLiteral("Error : seleccione una sola Transacción"));
        return;
    }
    if (Text6->text().isEmpty()) {
        MsgBox(QStringLiteral("Error : Indique Código del Concepto de Pago"), Mensajes::vbCritical);
        Text6->setFocus();
        return;
    }
    Quitar_Marcas();
    m.Rec_Fecha = Module1::Fecha_AMD(Txt(fila, colFecha));
    m.Rec_Secuencia = CInt(Num(fila, colSec));
    m.Rec_Operadora = CInt(Num(fila, colOperadora));
    m.Nom_Cliente = Txt(fila, colCliente);
    recibo.Rec_Monto = Txt(fila, colRecibido);
    Text6->clear();
    recibo.EMITIR_RECIBO();
    Reenlaza();
}

void Consola::COPIAR_Click()
{
    recibo.COPIAR();
    Aviso(QStringLiteral("Recibo Copiado......"));
}
