// The transaction console: a day's rows loaded into the grid with their
// totals, filtered, searched, corrected and paid cell by cell, paid in a batch
// through the payment dialog, taken back, deleted; every road ends in the rows
// of the database.
#include "dialogo.h"
#include "escribir.h"
#include "form2.h"
#include "mensajes.h"
#include "mesa.h"
#include "referencia.h"
#include "prueba.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontMetrics>
#include <QLabel>
#include <QRadioButton>
#include <QScopeGuard>
#include <QStyle>

namespace {

using enum Consola::Col;

struct Consola10 : Mesa<Form2> {
    Consola10() : Mesa(conReferencia(kDiezDeMarzo), "Form2", QDate(2025, 3, 10), QDate(2025, 3, 10)) {}
    QString bd(const QStringList& columnas, int secuencia) const { return Mesa::bd(columnas, secuencia, "20250310"); }
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
        QCOMPARE(c.fila(0, {colFecha, colSec, colCliente, colEstimado, colFactor, colPagado, colProveedor}),
                 (QStringList {"10/03/2025", "0001", "MARIA PEREZ", "34.325,00", "364,0000", "", ""}));
        // BANESCO PANAMA from what was sent: 20,5 x 380; its name cut to 14.
        QCOMPARE(c.fila(1, {colEstimado, colServicio}), (QStringList {"7.790,00", "BANESCO PANAMA"}));
        // Service 55 keeps its decimals and shows the pesos in dollars of today.
        QCOMPARE(c.fila(2, {colRecibido, colEstimado}), (QStringList {"30,86", "12.036,37"}));
        // Returned: no gains shown in % and G2, zeros in G-1 to G-3, its payment kept.
        QCOMPARE(c.fila(3, {colPorcentaje, colG2, colG1, colPagado, colEstimado}),
                 (QStringList {"", "", "0,00", "5.000,00", ""}));
        // Paid: what was paid at the rate paid, the bank's name, date of payment, the gift.
        QCOMPARE(c.fila(4, {colPagado, colFactor, colCodBanco, colBanco, colFechaPago, colRegalo, colDolar1}),
                 (QStringList {"68.000,00", "360,0000", "0134", "BANESCO", "11/03/2025", "3,778", "398,00"}));
        // A one-character bank is paid, with no gift, prices or date of payment.
        QCOMPARE(c.fila(5, {colPagado, colFechaPago, colRegalo, colDolar1}), (QStringList {"3.000,00", "", "", ""}));

        // Totals: the returned row counts as a row and as paid, not as received or gain.
        QCOMPARE(c.pies({colCodCliente, colRecibido, colPagado, colEstimado, colG1, colG3}),
                 (QStringList {"6", "343,70", "76.000,00", "54.151,37", "155,69", "0,20"}));
        QCOMPARE(p->GRID->Bookmark(), 5);
        QVERIFY(p->Check2->isChecked());
    }

    // Names sort as text, amounts by value; the filters are chosen with the
    // arrow keys; a name typed with the box ticked searches since 2023.
    void orden_y_filtros()
    {
        Consola10 c;
        Form2* p = c.p;
        emit p->GRID->HeadClick(colCliente);
        QCOMPARE(c.celda(0, colCliente), QStringLiteral("JOSE DIAZ"));
        emit p->GRID->HeadClick(colEstimado);
        QCOMPARE(c.celda(5, colEstimado), QStringLiteral("34.325,00"));

        p->activateWindow();
        p->Option1[Form2::selTodos]->setFocus();
        QTest::keyClick(p->Option1[Form2::selTodos], Qt::Key_Right);
        QVERIFY(p->Option1[Form2::selPagados]->isChecked());
        QCOMPARE(c.columna(colSec), (QStringList {"0004", "0005", "0006"}));
        QTest::keyClick(p->Option1[Form2::selPagados], Qt::Key_Right);
        QCOMPARE(c.columna(colSec), (QStringList {"0001", "0002", "0003"}));
        p->Text2->setText(QStringLiteral("MARIA"));
        QTest::keyClick(p->Text2, Qt::Key_Return);
        QCOMPARE(c.celda(0, colFecha), QStringLiteral("05/01/2024"));
        QCOMPARE(p->Text2->text(), QString());
        // Nothing in the range: no rows, the footers at zero.
        c.consultar(QDate(2025, 3, 1), QDate(2025, 3, 2));
        QCOMPARE(p->Celdas.UpperBound(1), -1);
        QCOMPARE(c.pie(colPagado), QStringLiteral("0,00"));
    }

    // The service list answers the arrow keys as the mouse: each step queries
    // anew. The entry below "TODOS" is service 01.
    void servicio_con_flechas()
    {
        Consola10 c;
        Form2* p = c.p;
        p->activateWindow();
        p->Combo1->setFocus();
        QTest::keyClick(p->Combo1, Qt::Key_Down);
        QCOMPARE(p->Combo1->currentText().left(2), QStringLiteral("01"));
        QCOMPARE(c.columna(colSec), (QStringList {"0001", "0004", "0005", "0006"}));
        c.s.base.sql(QStringLiteral("UPDATE MOVIMIENTOS SET tipo_servicio = 5 WHERE SECUENCIA = 6"));
        QTest::keyClick(p->Combo1, Qt::Key_Up);
        QTest::keyClick(p->Combo1, Qt::Key_Down);
        QCOMPARE(c.columna(colSec), (QStringList {"0001", "0004", "0005"}));
    }

    // A search typed without capitals or accents finds the names and notes that have them.
    void busquedas_sin_mayusculas_ni_acentos()
    {
        Consola10 c;
        const auto buscar = [&](const QString& texto) {
            c.p->Text2->setText(texto);
            QTest::keyClick(c.p->Text2, Qt::Key_Return);
            return c.columna(colCliente);
        };
        QCOMPARE(buscar(QStringLiteral("peña")), QStringList {"JOSÉ PEÑA"});
        QCOMPARE(buscar(QStringLiteral("jose pena")), QStringList {"JOSÉ PEÑA"});
        QCOMPARE(buscar(QStringLiteral("PEN")), (QStringList {"JOSÉ PEÑA", "PEDRO PENTON"}));
        QCOMPARE(buscar(QStringLiteral("ñico")), QStringList {"PEDRO PENTON"}); // in the note
        QCOMPARE(buscar(QStringLiteral("díaz")), (QStringList {"JOSE DIAZ", "JOSE DIAZ"}));
        QVERIFY(buscar(QStringLiteral("peñb")).isEmpty());
    }

    // A text longer than its column is cut to it; the largest amounts fit in theirs.
    void textos_y_montos_al_ancho_de_sus_columnas()
    {
        Consola10 c;
        escribirEnCelda(*c.p->GRID, 0, colReferencia, QString(60, QLatin1Char('R')));
        QCOMPARE(c.celda(0, colReferencia), QString(50, QLatin1Char('R')));
        c.p->ACTUALIZAR->click();
        QCOMPARE(c.bd({"length(REFERENCIA)"}, 1), QStringLiteral("50"));

        QTableView* v = c.p->GRID->vista();
        const QFontMetrics medida(v->font());
        QVERIFY(medida.height() >= 10); // still letters to read
        const int margen = v->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, v) + 1;
        for (const auto& [col, monto] : std::vector<std::pair<int, QString>> {{colFactor, "9.999,9999"},
                                                                              {colEstimado, "99.999.999,99"},
                                                                              {colPagado, "99.999.999,99"},
                                                                              {colEnvio, "99.999,99"},
                                                                              {colRecibido, "99.999,99"},
                                                                              {colG1, "9.999,99"}})
            QVERIFY2(medida.horizontalAdvance(monto) + 2 * margen < v->columnWidth(col), qPrintable(monto));
    }

    void ediciones_de_celdas()
    {
        Consola10 c;
        Form2* p = c.p;
        c.s.m->Dolar_Actual = 36.5f;
        // The same text typed again marks the row; either decimal mark is read.
        c.escribir(1, colNota, QStringLiteral("URGENTE"));
        QCOMPARE(c.celda(1, colMarca), QStringLiteral("1"));
        c.escribir(1, colRecibido, QStringLiteral("5.25"));
        QCOMPARE(c.celda(1, colRecibido), QStringLiteral("5,25"));
        QCOMPARE(c.celda(1, colEstimado), QStringLiteral("191")); // 5,25 x 36,5 without decimals
        c.escribir(1, colCodCliente, QStringLiteral("12"));
        QCOMPARE(c.celda(1, colCliente), QStringLiteral("MARIA PEREZ"));
        c.escribir(1, colCodServicio, QStringLiteral("5"));
        QCOMPARE(c.celda(1, colServicio), QStringLiteral("BANESCO PANAMA EXPRESS"));

        // A code with letters is no bank, even one that looks like one.
        c.escribir(0, colCodBanco, QStringLiteral("01A4"));
        QCOMPARE(c.s.ultimoMensaje(), QStringLiteral("Error : Banco no registrado"));
        QCOMPARE(c.s.mensajes.last().estilo, int(Mensajes::vbCritical));
        QCOMPARE(c.fila(0, {colCodBanco, colMarca}), (QStringList {"", "1"}));
        // Returned to the client: the estimate stays in view.
        c.escribir(2, colCodBanco, QStringLiteral("7777"));
        QCOMPARE(c.fila(2, {colBanco, colEstimado, colPorcentaje}), (QStringList {"Devoluciön", "12.036,37", "0"}));

        // Paid by typing the bank: the payment cut to bolivars, the gain of it.
        c.escribir(0, colCodBanco, QStringLiteral("0134"));
        QCOMPARE(c.fila(0, {colBanco, colPagado, colPorcentaje, colG2, colEstimado}),
                 (QStringList {"BANESCO", "34.325,00", "9,00", "8,49", ""}));
        QCOMPARE(p->GRID->Col(), int(colReferencia));
        c.escribir(0, colReferencia, QStringLiteral("REF1"));
        // A returned row as loaded has no gain to send: the server takes it as 0.
        c.escribir(3, colNota, QStringLiteral("DEVUELTO"));
        p->ACTUALIZAR->click();
        QCOMPARE(c.bd({"obs", "ganancia", "g1"}, 4), QStringLiteral("DEVUELTO|0.0|0.0"));
        QCOMPARE(c.bd({"C_BANCO", "REFERENCIA", "pago", "ganancia", "g1", "g2", "g3", "fecha_pago"}, 1),
                 QStringLiteral("0134|REF1|34325.0|9.0|8.49|8.49|0.0|"));
        QCOMPARE(c.bd({"C_BANCO", "pago", "ganancia"}, 3), QStringLiteral("7777|0.0|0.0"));
        QCOMPARE(c.bd({"recibido", "C_CLIENTE", "tipo_servicio"}, 2), QStringLiteral("5.25|12|5"));
        // The save reloads: the paid row now shows its payment and no marks are left.
        QCOMPARE(c.fila(0, {colPagado, colMarca}), (QStringList {"34.325,00", ""}));
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
        // The operator types into a cell and leaves it by a key (or not, with no key).
        const auto teclear = [&](int fila, int col, const QString& texto, Qt::Key tecla = Qt::Key_unknown) {
            v->setCurrentIndex(p->GRID->modelo()->index(fila, col));
            QTest::keyClick(v, texto.at(0).toLatin1());
            QLineEdit* editor = editorAbierto(v);
            QVERIFY(editor);
            QTest::keyClicks(editor, texto.mid(1));
            if (tecla == Qt::Key_unknown)
                return;
            QTest::keyClick(editor, tecla);
            QCoreApplication::processEvents(); // Enter commits once the editor is done with the key
            QCOMPARE(editorAbierto(v), nullptr);
        };
        // Where the cursor stands: row, column.
        const auto cursor = [&] { return std::pair {p->GRID->Bookmark(), p->GRID->Col()}; };

        // The provider's name, and on to the bank, where a code pays the row.
        teclear(0, colCodProveedor, QStringLiteral("2"), Qt::Key_Return);
        QCOMPARE(c.celda(0, colProveedor), QStringLiteral("LLANO"));
        QCOMPARE(cursor(), std::pair(0, int(colCodBanco)));
        teclear(0, colCodBanco, QStringLiteral("0134"), Qt::Key_Tab);
        QCOMPARE(c.fila(0, {colBanco, colPagado}), (QStringList {"BANESCO", "34.325,00"}));
        QCOMPARE(p->GRID->Col(), int(colReferencia));
        teclear(0, colReferencia, QStringLiteral("REF1"), Qt::Key_Return);
        // An unknown bank: the message, and the cursor back on the bank.
        teclear(2, colCodBanco, QStringLiteral("9"), Qt::Key_Return);
        QCOMPARE(c.s.ultimoMensaje(), QStringLiteral("Error : Banco no registrado"));
        QCOMPARE(cursor(), std::pair(2, int(colCodBanco)));

        // What was received, left by an arrow: the estimate follows.
        teclear(1, colRecibido, QStringLiteral("5.25"), Qt::Key_Down);
        QCOMPARE(c.fila(1, {colRecibido, colEstimado}), (QStringList {"5,25", "191"}));
        QCOMPARE(p->GRID->Bookmark(), 2);
        teclear(1, colCodServicio, QStringLiteral("1"), Qt::Key_Return);
        QCOMPARE(c.celda(1, colServicio), QStringLiteral("TRUMIN"));
        teclear(1, colCodCliente, QStringLiteral("12"), Qt::Key_Up);
        QCOMPARE(c.celda(1, colCliente), QStringLiteral("MARIA PEREZ"));

        // A sort, then a note typed and left by the click on the save.
        emit p->GRID->HeadClick(colCliente);
        teclear(c.filaDe(p, 3), colNota, QStringLiteral("LLAMAR"));
        QTest::mouseClick(p->ACTUALIZAR, Qt::LeftButton);
        QCOMPARE(c.bd({"obs"}, 3), QStringLiteral("LLAMAR"));
        QCOMPARE(c.bd({"C_PROVEEDOR", "C_BANCO", "REFERENCIA"}, 1), QStringLiteral("2|0134|REF1"));
        QCOMPARE(quejasDeLaVista, QStringList());
    }

    void de_pagada_a_no_pagada()
    {
        Consola10 c;
        c.escribir(4, colCodBanco, QStringLiteral("8888"));
        // The provider's gift is touched at once, by nothing.
        QCOMPARE(c.s.base.valor(QStringLiteral("select regalo from proveedor where C_proveedor = 2")), QStringLiteral("7.5"));
        QCOMPARE(c.fila(4, {colEstimado, colCodProveedor, colCodBanco, colPorcentaje, colG1, colRegalo}),
                 (QStringList {"68.000,00", "0000", "", "100", "188,90", "0"}));
        c.p->ACTUALIZAR->click();
        QCOMPARE(c.bd({"C_BANCO", "C_PROVEEDOR", "pago", "ganancia", "g1"}, 5), QStringLiteral("|0|0.0|100.0|188.9"));
        // Unpaid again: the estimate at today's price is back.
        QCOMPARE(c.celda(4, colEstimado), QStringLiteral("68.759,00"));
    }

    // What stops a payment run before the dialog, and FIJAR on the ticked rows.
    void seleccion_rechazada_y_fijar()
    {
        Consola10 c;
        Form2* p = c.p;
        // Nothing ticked, then a paid row among the ticked: nothing is paid.
        p->Sumarizar->click();
        QCOMPARE(c.s.ultimoMensaje(), QStringLiteral("Error : No selecciono información"));
        p->Marcar(0);
        p->Marcar(4);
        p->Sumarizar->click();
        QCOMPARE(c.s.ultimoMensaje(), QStringLiteral("Error : conflicto en la selección. Hay movimientos pagados"));
        QCOMPARE(c.celda(0, colSel), QStringLiteral("0"));

        // FIJAR prices the ticked unpaid rows and skips the paid ones.
        p->Marcar(0);
        p->Marcar(4);
        p->Text4->setText(QStringLiteral("36.5"));
        p->FIJAR->click();
        QCOMPARE(p->Text4->text(), QStringLiteral("36,5"));
        QCOMPARE(c.celda(0, colEstimado), QStringLiteral("3.441,00"));
        QCOMPARE(c.celda(4, colFactor), QStringLiteral("360,0000"));
        QCOMPARE(p->Text5->text(), QStringLiteral("3.442"));

        // With nothing loaded there is nothing to process.
        c.consultar(QDate(2025, 3, 1), QDate(2025, 3, 1));
        p->Sumarizar->click();
        QCOMPARE(c.s.ultimoMensaje(), QStringLiteral("Error : No hay información para procesar"));
    }

    // Three unpaid rows ticked and paid in one run through the dialog.
    void pago_en_lote()
    {
        Consola10 c;
        Form2* p = c.p;
        c.s.m->reloj = [] { return QDateTime(QDate(2025, 3, 12), QTime(15, 4, 5)); };
        for (int i : {0, 1, 2})
            p->Marcar(i);
        QCOMPARE(p->Text5->text(), QStringLiteral("54.151"));
        // Cancelled: nothing changes but the ticks.
        Dialogo::Reemplazar([](Dialogo& d) { d.CancelButton->click(); });
        p->Sumarizar->click();
        QCOMPARE(c.bd({"C_BANCO"}, 1), QString());
        QCOMPARE(c.celda(1, colSel), QStringLiteral("0"));

        for (int i : {0, 1, 2})
            p->Marcar(i);
        QStringList visto;
        Dialogo::Reemplazar([&visto](Dialogo& d) {
            visto << d.Text2[Dialogo::txtTransacciones]->text() << d.Text2[Dialogo::txtMonto]->text();
            d.OKButton->click(); // no provider yet
            d.Text2[Dialogo::txtCodProveedor]->setText(QStringLiteral("1"));
            QTest::keyClick(d.Text2[Dialogo::txtCodProveedor], Qt::Key_Return);
            visto << d.Text2[Dialogo::txtNombreProveedor]->text();
            d.OKButton->click(); // no reference yet
            d.Text2[Dialogo::txtReferencia]->setText(QStringLiteral("LOTE7"));
            d.Option2[Dialogo::bcoBanesco]->setChecked(true);
            d.Option3[Dialogo::opPagoMovil]->setChecked(true);
            d.OKButton->click();
        });
        p->Sumarizar->click();
        Dialogo::Reemplazar({});
        QCOMPARE(visto, (QStringList {"3 Transacciones", "54.151,37", "ORINOCO"}));
        QCOMPARE(c.s.textos().mid(c.s.mensajes.size() - 2),
                 (QStringList {"Error: Indique Código del Proveedor", "Error: Indique Número de Referencia"}));

        const QStringList campos {"C_BANCO", "REFERENCIA", "C_PROVEEDOR", "tipo_operacion", "pago",      "recibido",
                                  "g1",      "g2",         "g3",          "fecha_pago",     "hora_pago", "dolar1"};
        QCOMPARE(c.bd(campos, 1), QStringLiteral("0134|LOTE7|1|1|34325.0|94.3|8.49|8.49|0.0|20250312|15:04:05|400.0"));
        // With the half cent; 1,02 without.
        QCOMPARE(c.bd(campos, 2), QStringLiteral("0134|LOTE7|1|1|7790.0|20.5|1.03|1.03|0.0|20250312|15:04:05|400.0"));
        // Service 55: the gain is shared with the provider by its porgan of 40.
        QCOMPARE(c.bd(campos, 3), QStringLiteral("0134|LOTE7|1|1|12036.37|30.86|1.5|0.9|0.6|20250312|15:04:05|400.0"));
        // The provider's gift grows once, by its 1 % of all that was received.
        QCOMPARE(c.s.base.valor(QStringLiteral("select regalo || '|' || ultregalo from proveedor where C_proveedor = 1")),
                 QStringLiteral("11.4566|1.4566"));
        QCOMPARE(p->Text5->text(), QStringLiteral("0"));
        QCOMPARE(c.celda(0, colCodBanco), QStringLiteral("0134"));
    }

    void borrar_y_sentencias()
    {
        Consola10 c;
        Form2* p = c.p;
        // A paid row is not deleted, and nobody is asked.
        p->GRID->vista()->setCurrentIndex(p->GRID->modelo()->index(4, colCliente));
        emit p->GRID->DblClick();
        QVERIFY(c.s.mensajes.isEmpty());
        // An unpaid one, after a Yes to the box; a No keeps it.
        p->GRID->vista()->setCurrentIndex(p->GRID->modelo()->index(1, colCliente));
        c.s.respuesta = Mensajes::vbNo;
        emit p->GRID->DblClick();
        QCOMPARE(c.s.ultimoMensaje(), QStringLiteral("Atención : Quiere eliminar el Registro  10/03/2025  0002"));
        QCOMPARE(c.s.mensajes.last().estilo, Mensajes::vbYesNo + Mensajes::vbCritical + 256);
        QCOMPARE(c.bd({"count(*)"}, 2), QStringLiteral("1"));
        c.s.respuesta = Mensajes::vbYes;
        emit p->GRID->DblClick();
        QCOMPARE(c.bd({"count(*)"}, 2), QStringLiteral("0"));
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
