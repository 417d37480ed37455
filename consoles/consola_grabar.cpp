// The console's save of its marked rows and the delete of one row.
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

// ------------------------------------------------------------------ saving and deleting

void Consola::ACTUALIZAR_Click()
{
    Modo_Grabar = 0;
    GRABAR_MOVIMIENTOS();
}

QString Consola::Sentencia_Fila(int i, const QString& Hoy, const QString& Ahora)
{
    const QString recibido = punto(Txt(i, colRecibido).trimmed());
    const QString enviado = punto(Txt(i, colEnvio).trimmed());
    const QString confirmacion = punto(Txt(i, colFactor).trimmed());
    const QString ganancia = punto(Txt(i, colPorcentaje).trimmed());
    QString pago = QStringLiteral("0");
    if (Celdas(i, colEstimado).Len() > 0)
        pago = Txt(i, colEstimado);
    if (Celdas(i, colPagado).Len() > 0)
        pago = Txt(i, colPagado);
    pago = punto(pago.remove(QLatin1Char('.')));
    Celdas(i, colCodProveedor) = Txt(i, colCodProveedor).trimmed();

    return QStringLiteral(" UPDATE MOVIMIENTOS SET ") + asigna("recibido", recibido) + asigna("enviado", enviado) +
           asigna("C_CLIENTE", Txt(i, colCodCliente)) + asigna("obs", Txt(i, colNota)) +
           asigna("C_PROVEEDOR", Txt(i, colCodProveedor)) + asigna("pago", pago) + asigna("C_BANCO", Txt(i, colCodBanco)) +
           asigna("operadora", Txt(i, colOperadora)) + asigna("REFERENCIA", Txt(i, colReferencia)) +
           asigna("confirmacion", confirmacion) + asigna("tipo_operacion", Txt(i, colTipoOp)) + asigna("ganancia", ganancia) +
           Asignaciones_Ganancia(i, Hoy, Ahora) + QStringLiteral(" tipo_servicio =  '") + Txt(i, colCodServicio) +
           QStringLiteral("'") + QStringLiteral(" WHERE FECHA=  '") + Module1::Fecha_AMD(Txt(i, colFecha)) + QStringLiteral("'") +
           QStringLiteral(" and SECUENCIA = '") + Txt(i, colSec) + QStringLiteral("'");
}

QString Consola::Asignaciones_G(int i)
{
    Celdas(i, colG2) = Txt(i, colG2).trimmed();
    const QString g1 = punto(Txt(i, colG2));
    QString g2 = g1;
    QString g3 = QStringLiteral("0");
    // Services of 50 and up share the gain with the provider by its porgan.
    if (Txt(i, colCodProveedor) != QLatin1String("0000") && Num(i, colCodServicio) > 49) {
        m.Porc_Gan = CInt(CDbl(m.Proveedores_T(CInt(Num(i, colCodProveedor)), 3)));
        m.Porc_Cliente = int16_t(100 - m.Porc_Gan);
        g2 = punto(Format(Num(i, colG2) * m.Porc_Cliente / 100, QStringLiteral("###0.00")));
        g3 = punto(Format(Num(i, colG2) * m.Porc_Gan / 100, QStringLiteral("###0.00")));
    }
    return asigna("g1", g1) + asigna("g2", g2) + asigna("g3", g3);
}

QString Consola::Asignaciones_Ganancia(int i, const QString& Hoy, const QString& Ahora)
{
    QString s = Asignaciones_G(i);
    if (Modo_Grabar == 1)
        s += asigna("fecha_pago", Hoy) + asigna("hora_pago", Ahora) + asigna("dolar1", punto(Text8->text())) +
             asigna("dolar2", punto(Text9->text()));
    return s + asigna("bancozelle", Txt(i, colBancoZelle));
}

void Consola::GRABAR_MOVIMIENTOS()
{
    // The client machine's clock, one moment for the whole batch.
    const QDateTime ahora = m.reloj();
    const QString Hoy = Module1::Fecha_AMD(ahora.date().toString(QStringLiteral("dd/MM/yyyy")));
    const QString Ahora = ahora.time().toString(QStringLiteral("hh:mm:ss"));

    Suma_Recibido = 0;
    m.SQL.clear();
    int filas = 0;
    for (int i : Celdas.Filas()) {
        if (!(Celdas(i, colMarca) == 1))
            continue;
        m.SQL += Sentencia_Fila(i, Hoy, Ahora);
        ++filas;
        if (Modo_Grabar == 1) {
            Suma_Recibido += CDbl(Txt(i, colRecibido).trimmed());
            Prov_Pago = CInt(Num(i, colCodProveedor));
        }
    }
    if (m.SQL.length() > 5) {
        try {
            m.Conexion.Execute(m.SQL, filas, Versiones_Cargadas);
        } catch (const FalloFilasCambiadas& f) {
            // Nothing of the batch was written: no gift for a payment run either.
            m.SQL.clear();
            Modo_Grabar = 0;
            Filas_Cambiadas(f);
            return;
        }
    }
    m.SQL.clear();
    if (Modo_Grabar == 1)
        Actualiza_Regalo();
    CONSULTAR();
    Modo_Grabar = 0;
}

void Consola::Filas_Cambiadas(const FalloFilasCambiadas& f)
{
    QString texto = QStringLiteral("Otro operador modificó o eliminó estas transacciones después de cargarlas en esta "
                                   "pantalla:\n");
    for (const auto& [fecha, secuencia] : f.claves())
        texto += fecha.mid(6, 2) + QLatin1Char('/') + fecha.mid(4, 2) + QLatin1Char('/') + fecha.left(4) + QStringLiteral("  ") +
                 QStringLiteral("%1").arg(secuencia, 4, 10, QLatin1Char('0')) + QLatin1Char('\n');
    texto += QStringLiteral("No se grabó ningún cambio. Se vuelven a cargar los datos actuales.");
    MsgBox(texto, Mensajes::vbExclamation);
    CONSULTAR();
}

void Consola::Actualiza_Regalo()
{
    // One provider pays the whole run: its commission on all that was received.
    Regalo_Row = redondea4(CDbl(m.Proveedores_T(Prov_Pago, 4)) * Suma_Recibido / 100);
    m.SQL = QStringLiteral(" UPDATE proveedor SET ") + QStringLiteral(" regalo = regalo +  '") + Str(Regalo_Row) +
            QStringLiteral("'*") + QStringLiteral(" ultregalo =  '") + Str(Regalo_Row) + QStringLiteral("'") +
            QStringLiteral(" WHERE C_proveedor =  '") + QString::number(Prov_Pago) + QStringLiteral("'");
    // The amounts' commas first; "*" stands for the comma of the assignments.
    m.SQL.replace(QLatin1Char(','), QLatin1Char('.'));
    m.SQL.replace(QLatin1Char('*'), QLatin1Char(','));
    m.Conexion.Execute(m.SQL);
}

void Consola::GRID_DblClick()
{
    const int fila = GRID->Bookmark();
    if (fila < 0)
        return;
    // The first click of a double click on "Sel" ticked the row: it is not a tick.
    if (GRID->Col() == colSel)
        Marcar(fila);
    m.Rec_Fecha = Txt(fila, colFecha);
    m.K = Txt(fila, colSec);
    const QString banco = Txt(fila, colCodBanco);
    // A paid or returned row is not deleted here.
    if (!banco.trimmed().isEmpty())
        return;
    const int respuesta = MsgBox(
        QStringLiteral("Atención : Quiere eliminar el Registro  ") + m.Rec_Fecha + QStringLiteral("  ") + m.K.aTexto(),
        Mensajes::vbYesNo + Mensajes::vbCritical + 256, QStringLiteral("ConfirmaciÓn de eliminación  TRUMIN"));
    if (respuesta == Mensajes::vbYes)
        BORRAR_MOVIMIENTO();
}

void Consola::BORRAR_MOVIMIENTO()
{
    m.SQL = QStringLiteral("delete movimientos where ") + QStringLiteral(" fecha = '") + Module1::Fecha_AMD(m.Rec_Fecha) +
            QStringLiteral("'") + QStringLiteral(" and secuencia =  ") + m.K.aTexto();
    try {
        m.Conexion.Execute(m.SQL, 1, Versiones_Cargadas);
    } catch (const FalloFilasCambiadas& f) {
        Filas_Cambiadas(f);
        return;
    }
    CONSULTAR();
}
