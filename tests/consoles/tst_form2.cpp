// The transaction console: a day's rows loaded into the grid with their
// totals, corrected and paid cell by cell, paid in a batch through the payment
// dialog, taken back, deleted; every road ends in the rows of the database.
#include "dialogo.h"
#include "escribir.h"
#include "form2.h"
#include "login.h"
#include "mensajes.h"
#include "mesa.h"
#include "prueba.h"
#include "sesion.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QTableView>

namespace {

// Six rows of 10/03/2025 and one of 2024, each with something to show:
//  1 unpaid TRUMIN (estimate from what was received, cut to whole bolivars)
//  2 unpaid BANESCO PANAMA (from what was sent, cut)
//  3 unpaid PESOS COLOMBIA (service 55: decimals kept, received recalculated)
//  4 returned to the client (7777)
//  5 paid by BANESCO, provider 2 with a commission of 2 %
//  6 paid with a one-character bank code
const char* const kDatos = R"(
INSERT INTO bancos VALUES (102, 'BANCO DE VENEZUELA'), (134, 'BANESCO');
INSERT INTO clientes VALUES (12, 'MARIA PEREZ', ''), (13, 'JOSE DIAZ', '');
INSERT INTO proveedor (C_proveedor, D_proveedor, porgan, Comision, regalo, ultregalo)
    VALUES (1, 'ORINOCO', 40, 1.0, 10, 0), (2, 'LLANO', 30, 2.0, 7.5, 0);
INSERT INTO servicios_usdt (C_SERVIcio, D_SERVIcio, compra, venta, equivalencia, div)
    VALUES (1, 'DOLAR', 400, 0, 0, 0), (2, 'BASE', 410, 0, 0, 0), (4, 'PESOS', 4000, 0, 55, 1);
INSERT INTO servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, MONTO)
    VALUES (1, 'TRUMIN', 9, 2, 1, 'T', 364), (5, 'BANESCO PANAMA EXPRESS', 5, 2, 1, 'N', 380),
           (55, 'PESOS COLOMBIA', 5, 4, 2, 'M', 0.0975);
INSERT INTO parametros VALUES ('1234', '', '', 400);
INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, pago, C_BANCO, REFERENCIA,
                         confirmacion, operadora, tipo_operacion, tipo_servicio, ganancia, obs, g1, g2, g3,
                         fecha_pago, hora_pago, dolar1, dolar2, bancozelle) VALUES
 ('20250310', 1, 12, 100, 94.3, 0, 0, '', '', 0, '1', 2, 1, 100, '', 94.3, 94.3, 0, '', '', 0, 0, '0'),
 ('20250310', 2, 13, 20.5, 20.5, 0, 0, '', '', 0, '2', 2, 5, 100, 'URGENTE', 20.5, 20.5, 0, '', '', 0, 0, '0'),
 ('20250310', 3, 12, 123450, 30, 0, 0, '', '', 0, '1', 2, 55, 100, '', 30, 30, 0, '', '', 0, 0, '0'),
 ('20250310', 4, 12, 20, 18.62, 0, 5000, '7777', '', 350, '1', 2, 1, 3, '', 1, 1, 0, '', '', 0, 0, '0'),
 ('20250310', 5, 13, 200, 188.9, 2, 68000, '0134', 'R555', 360, '2', 1, 1, 5.5, '', 10.39, 10.39, 0,
  '20250311', '10:00:00', 398, 405, '3'),
 ('20250310', 6, 12, 10, 10, 1, 3000, '5', 'X', 300, '1', 2, 1, 2, '', 0.5, 0.5, 0.2, '20250311', '11:00:00', 1, 1, '0'),
 ('20240105', 1, 12, 10, 10, 0, 0, '', '', 0, '1', 2, 1, 100, '', 10, 10, 0, '', '', 0, 0, '0');
)";

struct Consola10 : Mesa<Form2> {
    Consola10() : Mesa(QString::fromUtf8(kDatos), "Form2", QDate(2025, 3, 10), QDate(2025, 3, 10)) {}
    QString bd(const QString& columnas, int secuencia, const QString& fecha = QStringLiteral("20250310")) const
    {
        return Mesa::bd(columnas, secuencia, fecha);
    }
};

// What Qt's item views complain of, noted while a test installs anotarQueja;
// every message still goes on to the handler that was in place.
QtMessageHandler manejadorPrevio = nullptr;
QStringList quejasDeLaVista;

void anotarQueja(QtMsgType tipo, const QMessageLogContext& contexto, const QString& texto)
{
    if (texto.contains(QLatin1String("QAbstractItemView")))
        quejasDeLaVista << texto;
    manejadorPrevio(tipo, contexto, texto);
}

} // namespace

class PruebaForm2 : public QObject {
    Q_OBJECT
private slots:
    void carga_celdas_y_pies()
    {
        Consola10 c;
        Form2* p = c.p;
        QCOMPARE(p->windowTitle(), QStringLiteral("Form2 :       ACTUALIZACIONES Y CONSULTAS"));
        QCOMPARE(p->Text8->text(), QStringLiteral("400,00"));
        QCOMPARE(p->Label1->text(), QStringLiteral(" TRU = 364,00    ZEL = ,00   ZIN = ,00    AMA = ,00"));
        QCOMPARE(p->Combo1->itemText(2), QStringLiteral("05 - BANESCO PANA (380)"));
        QCOMPARE(p->Combo1->itemText(p->Combo1->count() - 1), QStringLiteral("99 - TODOS SW_CALCULO=2"));
        QCOMPARE(p->Celdas.UpperBound(1), 5);

        // Unpaid TRUMIN: 94,30 received x 364, cut; the price of the moment in "Factor";
        // provider 0 has no name.
        QCOMPARE(c.fila(0, {0, 1, 3, 8, 16, 15, 7}),
                 (QStringList{"10/03/2025", "0001", "MARIA PEREZ", "34.325,00", "364,0000", "", ""}));
        // BANESCO PANAMA from what was sent: 20,5 x 380; its name cut to 14.
        QCOMPARE(c.fila(1, {8, 19}), (QStringList{"7.790,00", "BANESCO PANAMA"}));
        // Service 55 keeps its decimals and shows the pesos in dollars of today.
        QCOMPARE(c.fila(2, {5, 8}), (QStringList{"30,86", "12.036,37"}));
        // Returned: no gains shown in % and G2, zeros in G-1 to G-3, its payment kept.
        QCOMPARE(c.fila(3, {20, 21, 23, 15, 8}), (QStringList{"", "", "0,00", "5.000,00", ""}));
        // Paid: what was paid at the rate paid, the bank's name, date of payment, the gift.
        QCOMPARE(c.fila(4, {15, 16, 9, 10, 26, 28, 29}),
                 (QStringList{"68.000,00", "360,0000", "0134", "BANESCO", "11/03/2025", "3,778", "398,00"}));
        // A one-character bank is paid, with no gift, prices or date of payment.
        QCOMPARE(c.fila(5, {15, 26, 28, 29}), (QStringList{"3.000,00", "", "", ""}));

        // Totals: the returned row counts as a row and as paid, not as received or gain.
        QCOMPARE(c.pies({2, 5, 15, 8, 23, 25}), (QStringList{"6", "343,70", "76.000,00", "54.151,37", "155,69", "0,20"}));
        QCOMPARE(p->GRID->Bookmark(), 5);
        QVERIFY(p->Check2->isChecked());
        QVERIFY(!p->GRID->Columns(12).Visible() && !p->GRID->Columns(24).Visible());
        QCOMPARE(p->GRID->Columns(13).Order(), 1);

        // Names sort as text, amounts by value.
        emit p->GRID->HeadClick(3);
        QCOMPARE(c.celda(0, 3), QStringLiteral("JOSE DIAZ"));
        emit p->GRID->HeadClick(8);
        QCOMPARE(c.celda(5, 8), QStringLiteral("34.325,00"));

        // The filters, chosen with the arrow keys: the paid ones, then only the
        // unpaid ones; a name typed with the box ticked searches since 2023.
        p->activateWindow();
        p->Option1[0]->setFocus();
        QTest::keyClick(p->Option1[0], Qt::Key_Right);
        QVERIFY(p->Option1[1]->isChecked());
        QCOMPARE(c.celda(0, 1) + c.celda(1, 1) + c.celda(2, 1), QStringLiteral("000400050006"));
        QTest::keyClick(p->Option1[1], Qt::Key_Right);
        QCOMPARE(c.celda(0, 1) + c.celda(1, 1) + c.celda(2, 1), QStringLiteral("000100020003"));
        QCOMPARE(p->Celdas.filas(), 3);
        p->Text2->setText(QStringLiteral("MARIA"));
        QTest::keyClick(p->Text2, Qt::Key_Return);
        QCOMPARE(c.celda(0, 0), QStringLiteral("05/01/2024"));
        QCOMPARE(p->Text2->text(), QString());
        // Nothing in the range: no rows, the footers at zero.
        p->Fecha1->setDate(QDate(2025, 3, 1));
        p->Fecha2->setDate(QDate(2025, 3, 2));
        p->SELECCIONA->click();
        QCOMPARE(p->Celdas.UpperBound(1), -1);
        QCOMPARE(c.pie(15), QStringLiteral("0,00"));
    }

    void ediciones_de_celdas()
    {
        Consola10 c;
        Form2* p = c.p;
        c.s.m->Dolar_Actual = 36.5f;
        // The same text typed again marks the row; either decimal mark is read.
        c.escribir(1, 22, QStringLiteral("URGENTE"));
        QCOMPARE(c.celda(1, 12), QStringLiteral("1"));
        c.escribir(1, 5, QStringLiteral("5.25"));
        QCOMPARE(c.celda(1, 5), QStringLiteral("5,25"));
        QCOMPARE(c.celda(1, 8), QStringLiteral("191")); // 5,25 x 36,5 without decimals
        c.escribir(1, 2, QStringLiteral("12"));
        QCOMPARE(c.celda(1, 3), QStringLiteral("MARIA PEREZ"));
        c.escribir(1, 18, QStringLiteral("5"));
        QCOMPARE(c.celda(1, 19), QStringLiteral("BANESCO PANAMA EXPRESS"));

        // A code with letters is no bank, even one that looks like one.
        c.escribir(0, 9, QStringLiteral("01A4"));
        QCOMPARE(c.s.ultimoMensaje(), QStringLiteral("Error : Banco no registrado"));
        QCOMPARE(c.s.mensajes.last().estilo, int(Mensajes::vbCritical));
        QCOMPARE(c.celda(0, 9), QString());
        QCOMPARE(c.celda(0, 12), QStringLiteral("1"));
        // Returned to the client: the estimate stays in view.
        c.escribir(2, 9, QStringLiteral("7777"));
        QCOMPARE(c.fila(2, {10, 8, 20}), (QStringList{"Devoluciön", "12.036,37", "0"}));

        // Paid by typing the bank: the payment cut to bolivars, the gain of it.
        c.escribir(0, 9, QStringLiteral("0134"));
        QCOMPARE(c.fila(0, {10, 15, 20, 21, 8}), (QStringList{"BANESCO", "34.325,00", "9,00", "8,49", ""}));
        QCOMPARE(p->GRID->Col(), 11);
        c.escribir(0, 11, QStringLiteral("REF1"));
        // A returned row as loaded has no gain to send: the server takes it as 0.
        c.escribir(3, 22, QStringLiteral("DEVUELTO"));
        p->ACTUALIZAR->click();
        QCOMPARE(c.bd(QStringLiteral("obs || '|' || ganancia || '|' || g1"), 4), QStringLiteral("DEVUELTO|0.0|0.0"));
        QCOMPARE(c.bd(QStringLiteral("C_BANCO || '|' || REFERENCIA || '|' || pago || '|' || ganancia || '|' || g1 || '|' || g2 || '|' || g3 || '|' || fecha_pago"), 1),
                 QStringLiteral("0134|REF1|34325.0|9.0|8.49|8.49|0.0|"));
        QCOMPARE(c.bd(QStringLiteral("C_BANCO || '|' || pago || '|' || ganancia"), 3), QStringLiteral("7777|0.0|0.0"));
        QCOMPARE(c.bd(QStringLiteral("recibido || '|' || C_CLIENTE || '|' || tipo_servicio"), 2), QStringLiteral("5.25|12|5"));
        // The save reloads: the paid row now shows its payment and no marks are left.
        QCOMPARE(c.fila(0, {15, 12}), (QStringList{"34.325,00", ""}));
    }

    // The same corrections from the keyboard: the first key opens the cell,
    // Enter, Tab or an arrow leaves it, the after-edit rules move the cursor
    // and repaint the grid, a sort and a save reload it. The grid's view has
    // nothing to complain of all along.
    void ediciones_desde_el_teclado()
    {
        Consola10 c;
        Form2* p = c.p;
        c.s.m->Dolar_Actual = 36.5f;
        quejasDeLaVista.clear();
        manejadorPrevio = qInstallMessageHandler(anotarQueja);
        const auto devolver = qScopeGuard([] { qInstallMessageHandler(manejadorPrevio); });
        QTableView* v = p->GRID->vista();
        p->activateWindow();
        v->setFocus();
        const auto teclear = [&](int fila, int col, const QString& texto) {
            v->setCurrentIndex(p->GRID->modelo()->index(fila, col));
            QTest::keyClick(v, texto.at(0).toLatin1());
            QLineEdit* editor = editorAbierto(v);
            QVERIFY(editor);
            QTest::keyClicks(editor, texto.mid(1));
        };
        const auto salir = [&](Qt::Key tecla) {
            QLineEdit* editor = editorAbierto(v);
            QVERIFY(editor);
            QTest::keyClick(editor, tecla);
            QCoreApplication::processEvents(); // Enter commits once the editor is done with the key
            QCOMPARE(editorAbierto(v), nullptr);
        };

        // The provider's name, and on to the bank, where a code pays the row.
        teclear(0, 6, QStringLiteral("2"));
        salir(Qt::Key_Return);
        QCOMPARE(c.celda(0, 7), QStringLiteral("LLANO"));
        QCOMPARE(p->GRID->Col(), 9);
        QCOMPARE(p->GRID->Bookmark(), 0);
        teclear(0, 9, QStringLiteral("0134"));
        salir(Qt::Key_Tab);
        QCOMPARE(c.fila(0, {10, 15}), (QStringList{"BANESCO", "34.325,00"}));
        QCOMPARE(p->GRID->Col(), 11);
        teclear(0, 11, QStringLiteral("REF1"));
        salir(Qt::Key_Return);
        // An unknown bank: the message, and the cursor back on the bank.
        teclear(2, 9, QStringLiteral("9"));
        salir(Qt::Key_Return);
        QCOMPARE(c.s.ultimoMensaje(), QStringLiteral("Error : Banco no registrado"));
        QCOMPARE(p->GRID->Col(), 9);
        QCOMPARE(p->GRID->Bookmark(), 2);

        // What was received, left by an arrow: the estimate follows.
        teclear(1, 5, QStringLiteral("5.25"));
        salir(Qt::Key_Down);
        QCOMPARE(c.fila(1, {5, 8}), (QStringList{"5,25", "191"}));
        QCOMPARE(p->GRID->Bookmark(), 2);
        teclear(1, 18, QStringLiteral("1"));
        salir(Qt::Key_Return);
        QCOMPARE(c.celda(1, 19), QStringLiteral("TRUMIN"));
        teclear(1, 2, QStringLiteral("12"));
        salir(Qt::Key_Up);
        QCOMPARE(c.celda(1, 3), QStringLiteral("MARIA PEREZ"));

        // A sort, then a note typed and left by the click on the save.
        emit p->GRID->HeadClick(3);
        int fila = 0;
        while (c.celda(fila, 1) != QLatin1String("0003"))
            ++fila;
        teclear(fila, 22, QStringLiteral("LLAMAR"));
        QTest::mouseClick(p->ACTUALIZAR, Qt::LeftButton);
        QCOMPARE(c.bd(QStringLiteral("obs"), 3), QStringLiteral("LLAMAR"));
        QCOMPARE(c.bd(QStringLiteral("C_PROVEEDOR || '|' || C_BANCO || '|' || REFERENCIA"), 1), QStringLiteral("2|0134|REF1"));
        QCOMPARE(quejasDeLaVista, QStringList());
    }

    void de_pagada_a_no_pagada()
    {
        Consola10 c;
        c.escribir(4, 9, QStringLiteral("8888"));
        // The provider's gift is touched at once, by nothing.
        QCOMPARE(c.s.base.valor(QStringLiteral("select regalo from proveedor where C_proveedor = 2")), QStringLiteral("7.5"));
        QCOMPARE(c.fila(4, {8, 6, 9, 20, 23, 28}), (QStringList{"68.000,00", "0000", "", "100", "188,90", "0"}));
        c.p->ACTUALIZAR->click();
        QCOMPARE(c.bd(QStringLiteral("C_BANCO || '|' || C_PROVEEDOR || '|' || pago || '|' || ganancia || '|' || g1"), 5),
                 QStringLiteral("|0|0.0|100.0|188.9"));
        // Unpaid again: the estimate at today's price is back.
        QCOMPARE(c.celda(4, 8), QStringLiteral("68.759,00"));
    }

    void pago_en_lote()
    {
        Consola10 c;
        Form2* p = c.p;
        c.s.m->reloj = [] { return QDateTime(QDate(2025, 3, 12), QTime(15, 4, 5)); };

        // Nothing ticked, then a paid row among the ticked: nothing is paid.
        p->Sumarizar->click();
        QCOMPARE(c.s.ultimoMensaje(), QStringLiteral("Error : No selecciono información"));
        p->Marcar(0);
        p->Marcar(4);
        p->Sumarizar->click();
        QCOMPARE(c.s.ultimoMensaje(), QStringLiteral("Error : conflicto en la selección. Hay movimientos pagados"));
        QCOMPARE(c.celda(0, 17), QStringLiteral("0"));

        // FIJAR prices the ticked unpaid rows and skips the paid ones.
        p->Marcar(0);
        p->Marcar(4);
        p->Text4->setText(QStringLiteral("36.5"));
        p->FIJAR->click();
        QCOMPARE(p->Text4->text(), QStringLiteral("36,5"));
        QCOMPARE(c.celda(0, 8), QStringLiteral("3.441,00"));
        QCOMPARE(c.celda(4, 16), QStringLiteral("360,0000"));
        QCOMPARE(p->Text5->text(), QStringLiteral("3.442"));

        // A query drops the marks; three unpaid rows are ticked and paid in one run.
        p->SELECCIONA->click();
        for (int i : {0, 1, 2})
            p->Marcar(i);
        QCOMPARE(p->Text5->text(), QStringLiteral("54.151"));
        // Cancelled: nothing changes but the ticks.
        Dialogo::Reemplazar([](Dialogo& d) { d.CancelButton->click(); });
        p->Sumarizar->click();
        QCOMPARE(c.bd(QStringLiteral("C_BANCO"), 1), QString());
        QCOMPARE(c.celda(1, 17), QStringLiteral("0"));

        for (int i : {0, 1, 2})
            p->Marcar(i);
        QStringList visto;
        Dialogo::Reemplazar([&visto](Dialogo& d) {
            visto << d.Text2[4]->text() << d.Text2[0]->text();
            d.OKButton->click(); // no provider yet
            d.Text2[1]->setText(QStringLiteral("1"));
            QTest::keyClick(d.Text2[1], Qt::Key_Return);
            visto << d.Text2[3]->text();
            d.OKButton->click(); // no reference yet
            d.Text2[2]->setText(QStringLiteral("LOTE7"));
            d.Option2[1]->setChecked(true);
            d.Option3[0]->setChecked(true);
            d.OKButton->click();
        });
        p->Sumarizar->click();
        Dialogo::Reemplazar({});
        QCOMPARE(visto, (QStringList{"3 Transacciones", "54.151,37", "ORINOCO"}));
        QCOMPARE(c.s.mensajes[c.s.mensajes.size() - 2].texto, QStringLiteral("Error: Indique Código del Proveedor"));
        QCOMPARE(c.s.ultimoMensaje(), QStringLiteral("Error: Indique Número de Referencia"));

        const QString campos = QStringLiteral(
            "C_BANCO || '|' || REFERENCIA || '|' || C_PROVEEDOR || '|' || tipo_operacion || '|' || pago || '|' || "
            "recibido || '|' || g1 || '|' || g2 || '|' || g3 || '|' || fecha_pago || '|' || hora_pago || '|' || dolar1");
        QCOMPARE(c.bd(campos, 1), QStringLiteral("0134|LOTE7|1|1|34325.0|94.3|8.49|8.49|0.0|20250312|15:04:05|400.0"));
        QCOMPARE(c.bd(campos, 2), QStringLiteral("0134|LOTE7|1|1|7790.0|20.5|1.03|1.03|0.0|20250312|15:04:05|400.0")); // with the half cent; 1,02 without
        // Service 55: the gain is shared with the provider by its porgan of 40.
        QCOMPARE(c.bd(campos, 3), QStringLiteral("0134|LOTE7|1|1|12036.37|30.86|1.5|0.9|0.6|20250312|15:04:05|400.0"));
        // The provider's gift grows once, by its 1 % of all that was received.
        QCOMPARE(c.s.base.valor(QStringLiteral("select regalo || '|' || ultregalo from proveedor where C_proveedor = 1")),
                 QStringLiteral("11.4566|1.4566"));
        QCOMPARE(p->Text5->text(), QStringLiteral("0"));
        QCOMPARE(c.celda(0, 9), QStringLiteral("0134"));

        // With nothing loaded there is nothing to process.
        p->Fecha1->setDate(QDate(2025, 3, 1));
        p->Fecha2->setDate(QDate(2025, 3, 1));
        p->SELECCIONA->click();
        p->Sumarizar->click();
        QCOMPARE(c.s.ultimoMensaje(), QStringLiteral("Error : No hay información para procesar"));
    }

    void borrar_y_sentencias()
    {
        Consola10 c;
        Form2* p = c.p;
        // A paid row is not deleted, and nobody is asked.
        p->GRID->vista()->setCurrentIndex(p->GRID->modelo()->index(4, 3));
        emit p->GRID->DblClick();
        QVERIFY(c.s.mensajes.isEmpty());
        // An unpaid one, after a Yes to the box; a No keeps it.
        p->GRID->vista()->setCurrentIndex(p->GRID->modelo()->index(1, 3));
        c.s.respuesta = Mensajes::vbNo;
        emit p->GRID->DblClick();
        QCOMPARE(c.s.ultimoMensaje(), QStringLiteral("Atención : Quiere eliminar el Registro  10/03/2025  0002"));
        QCOMPARE(c.s.mensajes.last().estilo, Mensajes::vbYesNo + Mensajes::vbCritical + 256);
        QCOMPARE(c.bd(QStringLiteral("count(*)"), 2), QStringLiteral("1"));
        c.s.respuesta = Mensajes::vbYes;
        emit p->GRID->DblClick();
        QCOMPARE(c.bd(QStringLiteral("count(*)"), 2), QStringLiteral("0"));
        QCOMPARE(p->Celdas.UpperBound(1), 4);

        // The statement of a saved row, in both forms, as the server receives it.
        const QString base = QStringLiteral(
            " UPDATE MOVIMIENTOS SET  recibido =  '188.90', enviado =  '200.00', C_CLIENTE =  '0013', obs =  '', "
            "C_PROVEEDOR =  '0002', pago =  '68000.00', C_BANCO =  '0134', operadora =  '2', REFERENCIA =  'R555', "
            "confirmacion =  '360.0000', tipo_operacion =  '1', ganancia =  '5.50', g1 =  '10.39', g2 =  '10.39', "
            "g3 =  '0',%1 bancozelle =  '3', tipo_servicio =  '01' WHERE FECHA=  '20250310' and SECUENCIA = '0005'");
        QCOMPARE(p->Sentencia_Fila(3, QStringLiteral("20250312"), QStringLiteral("09:08:07")), base.arg(QString()));
        p->Modo_Grabar = 1;
        QCOMPARE(p->Sentencia_Fila(3, QStringLiteral("20250312"), QStringLiteral("09:08:07")),
                 base.arg(QStringLiteral(" fecha_pago =  '20250312', hora_pago =  '09:08:07', dolar1 =  '400.00', "
                                         "dolar2 =  '410.00',")));
    }
};

REGISTRAR_PRUEBA(PruebaForm2);
#include "tst_form2.moc"
