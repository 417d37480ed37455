// The statistics screens over crafted rows whose sums are known: the month by
// day with its footers, average and balance, the groupings and their shares,
// the filters, the sorts, the months without data, the year by month and the
// two USDT screens.
#include "../consoles/mesa.h"
#include "calculos01.h"
#include "calculos01_usdt.h"
#include "fallo.h"
#include "prueba.h"
#include "resumen_mensual.h"
#include "sesion.h"

#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace {

// March 2025, every row with something to show (received, gain g2):
//   03/1 client 12, TRUMIN, provider 1, BANESCO, operator 1     100   10
//   03/2 client 13, ZELLE, provider 2, VENEZUELA, op 2, direct   50    4
//   03/3 client 12, TRUMIN, unpaid: the whole of it is gain       30   30
//   15/1 client 13, ZELLE, provider 1, BANESCO, direct         1000  -20
//   15/2 returned to the client: counts nowhere                  500
//   20/1 unknown client 99, provider 7 and bank 0999, op 2         0    0
//   20/2 client 12, TRUMIN, provider 3, unpaid, a correction     -10
//   31/1 client 12, PESOS COLOMBIA (USDT), provider 2, BANESCO    25    2 (sent 100000)
// and one row of February 2025 (client 13, USDT BINANCE, sent 40).
const char* const kDatos = R"(
INSERT INTO bancos VALUES (102, 'BANCO DE VENEZUELA'), (134, 'BANESCO');
INSERT INTO clientes VALUES (12, 'MARIA PEREZ', ''), (13, 'JOSE DIAZ', '');
INSERT INTO proveedor (C_proveedor, D_proveedor, porgan, Comision, regalo, ultregalo)
    VALUES (1, 'ORINOCO', 40, 1.0, 0, 0), (2, 'LLANO', 30, 2.0, 0, 0), (3, 'SUR', 30, 1.0, 0, 0);
INSERT INTO servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, MONTO)
    VALUES (1, 'TRUMIN', 9, 2, 1, 'T', 364), (2, 'ZELLE', 6, 2, 1, 'Z', 370),
           (50, 'USDT BINANCE', 0, 2, 2, 'U', 0), (55, 'PESOS COLOMBIA', 5, 4, 2, 'M', 0.0975);
INSERT INTO parametros VALUES ('1234', '', '', 400);
INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, C_BANCO, operadora,
                         tipo_operacion, tipo_servicio, g2) VALUES
 ('20250303', 1, 12, 106, 100, 1, '0134', '1', 2, 1, 10),
 ('20250303', 2, 13, 50, 50, 2, '0102', '2', 3, 2, 4),
 ('20250303', 3, 12, 32, 30, 0, '', '1', 2, 1, 30),
 ('20250315', 1, 13, 1000, 1000, 1, '0134', '1', 3, 2, -20),
 ('20250315', 2, 12, 500, 500, 1, '7777', '1', 3, 2, 0),
 ('20250320', 1, 99, 0, 0, 7, '0999', '2', 2, 1, 0),
 ('20250320', 2, 12, -10, -10, 3, '', '1', 2, 1, 0),
 ('20250331', 1, 12, 100000, 25, 2, '0134', '1', 2, 55, 2),
 ('20250210', 1, 13, 40, 39.5, 2, '0134', '2', 2, 50, 1);
)";

} // namespace

class PruebaEstadisticas : public QObject {
    Q_OBJECT
private slots:
    void primera_activacion()
    {
        Mesa<CALCULOS01> t(kDatos, "CALCULOS01");
        CALCULOS01* p = t.p;
        const QDate hoy = QDate::currentDate();
        QCOMPARE(p->Text1[1]->text(), QString::number(hoy.year()));
        QCOMPARE(p->Text1[3]->text(), hoy.toString(QStringLiteral("MM")));
        QVERIFY(p->Option2[0]->isChecked());
        // "Trum" stands marked while the figures are those of every service.
        QVERIFY(p->Option3[1]->isChecked());
        QCOMPARE(t.s.m->L.aTexto(), QStringLiteral("0"));
        QStringList combo;
        for (int i = 0; i < p->Combo1->count(); ++i)
            combo << p->Combo1->itemText(i);
        QCOMPARE(combo, QStringList({"00 - TODOS", "01 - TRUMIN", "02 - ZELLE", "50 - USDT BINANCE",
                                     "55 - PESOS COLOMBIA", "98 - TODOS SW_CALCULO=1", "99 - TODOS SW_CALCULO=2"}));
        QCOMPARE(p->Combo1->currentIndex(), 0);
        QCOMPARE(p->Celdas.filas(), hoy.daysInMonth());
        QCOMPARE(p->SSTab1->count(), 3);
    }

    void mes_dia_por_dia()
    {
        Mesa<CALCULOS01> t(kDatos, "CALCULOS01");
        CALCULOS01* p = t.p;
        t.cargar(QStringLiteral("2025"), QStringLiteral("03"));
        const Celdas& c = p->Celdas;
        QCOMPARE(c.filas(), 31);
        // day, weekday, received, directs, transactions, %, gain
        QCOMPARE(t.fila(c, 0, {0, 1, 2, 3, 4, 5, 6}), QStringList({"01", "Sab", "", "", "", "", ""}));
        QCOMPARE(t.fila(c, 2, {0, 1, 2, 3, 4, 5, 6}), QStringList({"03", "Lun", "180", "50", "3", "24,44", "44,00"}));
        QCOMPARE(t.fila(c, 14, {2, 3, 4, 5, 6}), QStringList({"1.000", "1.000", "1", "-2,00", "-20,00"}));
        // a day whose money adds up to less than nothing earns no percentage
        QCOMPARE(t.fila(c, 19, {2, 3, 4, 5, 6}), QStringList({"-10", "", "2", "0,00", "0,00"}));
        QCOMPARE(t.fila(c, 30, {0, 1, 2, 4, 5, 6}), QStringList({"31", "Lun", "25", "1", "8,00", "2,00"}));
        // days with data, received, directs, transactions, %, gain
        QCOMPARE(t.pies(p->GRID, {0, 1, 2, 3, 4, 5, 6}), QStringList({"", "4", "1.195", "1.050", "7", "2,18", "26"}));
        QCOMPARE(p->Text1[5]->text(), QStringLiteral("299")); // 1195 over the 4 days with data
        QCOMPARE(p->Text1[6]->text(), QStringLiteral("145")); // received less directs

        // providers, the largest first, shares of the month's received total
        const Celdas& c1 = p->Celdas1;
        QCOMPARE(t.columna(c1, 0), QStringList({"0001", "0002", "0000", "0007", "0003"}));
        QCOMPARE(t.columna(c1, 1), QStringList({"ORINOCO", "LLANO", "0", "7", "SUR"}));
        QCOMPARE(t.columna(c1, 2), QStringList({"1.100", "75", "30", "", "-10"}));
        QCOMPARE(t.columna(c1, 3), QStringList({"92,05", "6,28", "2,51", "0,00", "0,00"}));
        QCOMPARE(t.pies(p->GRID1, {0, 2}), QStringList({"5", "1.195"}));

        const Celdas& c2 = p->Celdas2;
        QCOMPARE(t.fila(c2, 0, {0, 1, 2, 3, 4}), QStringList({"0013", "JOSE DIAZ", "1.050", "87,87", "2"}));
        QCOMPARE(t.fila(c2, 1, {0, 1, 2, 3, 4}), QStringList({"0012", "MARIA PEREZ", "145", "12,13", "4"}));
        QCOMPARE(t.fila(c2, 2, {0, 1, 2, 3, 4}), QStringList({"0099", "99", "", "0,00", "1"}));
        QCOMPARE(t.pies(p->GRID2, {0, 2, 4}), QStringList({"3", "1.195", "7"}));

        // banks: the paid rows, an unknown code shown as it stands
        const Celdas& c4 = p->Celdas4;
        QCOMPARE(t.columna(c4, 1), QStringList({"BANESCO", "BANCO DE VENEZUELA", "0999"}));
        QCOMPARE(t.columna(c4, 2), QStringList({"1.125", "50", ""}));
        QCOMPARE(t.columna(c4, 3), QStringList({"94,14", "4,18", "0,00"}));
        QCOMPARE(t.pies(p->GRID4, {0, 2}), QStringList({"3", "1.175"}));

        // services: no count footer
        const Celdas& c5 = p->Celdas5;
        QCOMPARE(t.columna(c5, 0), QStringList({"02", "01", "55"}));
        QCOMPARE(t.columna(c5, 1), QStringList({"ZELLE", "TRUMIN", "PESOS COLOMBIA"}));
        QCOMPARE(t.columna(c5, 3), QStringList({"87,87", "10,04", "2,09"}));
        QCOMPARE(t.pies(p->GRID5, {0, 2}), QStringList({"", "1.195"}));
    }

    void bancos_en_blanco_devoluciones_y_dias_sin_dolares()
    {
        // In April a bank of blanks is no payment, though its gain counts as
        // any unpaid row's; a code is the same bank with blanks around it or
        // without; a return ('7777', blanks aside) counts nowhere, not even
        // as a transaction. In May a day whose money adds up to nothing
        // divides by zero.
        const QString filas = QString::fromUtf8(kDatos) + QStringLiteral(
            "INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, C_BANCO, "
            "operadora, tipo_operacion, tipo_servicio, g2) VALUES "
            "('20250402', 1, 12, 10, 10, 1, '  ', '1', 3, 1, 5), "
            "('20250402', 2, 12, 20, 20, 1, ' 0134', '1', 3, 1, 3), "
            "('20250402', 3, 12, 40, 40, 1, '7777', '1', 3, 1, 9), "
            "('20250402', 4, 12, 5, 5, 1, '0134 ', '1', 3, 1, 1), "
            "('20250402', 5, 12, 7, 7, 1, '0134', '1', 3, 1, 1), "
            "('20250402', 6, 12, 100, 100, 1, ' 7777', '1', 3, 1, 50), "
            "('20250402', 7, 12, 200, 200, 1, '7777 ', '1', 3, 1, 50), "
            "('20250501', 1, 12, 0, 0, 0, '', '1', 2, 1, 0);");
        Mesa<CALCULOS01> t(filas, "CALCULOS01");
        CALCULOS01* p = t.p;
        t.cargar(QStringLiteral("2025"), QStringLiteral("04"));
        // received, directs (paid ones only), transactions, %, gain
        QCOMPARE(t.fila(p->Celdas, 1, {2, 3, 4, 5, 6}), QStringList({"42", "32", "4", "23,81", "10,00"}));
        QCOMPARE(p->Celdas4.filas(), 1);
        QCOMPARE(t.fila(p->Celdas4, 0, {0, 1, 2, 3}), QStringList({"0134", "BANESCO", "32", "76,19"}));
        QCOMPARE(t.pies(p->GRID1, {0, 2}), QStringList({"1", "42"}));
        p->Text1[3]->setText(QStringLiteral("05"));
        QVERIFY_THROWS_EXCEPTION(FalloEjecucion, p->Carga_Estadistica());
    }

    void periodos_que_no_nombran_un_mes()
    {
        // A month typed with one digit is that month; a text that names no
        // month shows nothing and never another month's money, on the daily
        // screen and on its USDT copy alike. A row on 29/02/2020, which a
        // year typed "202" with month "02" would reach as the text 20202.
        const QString filas = QString::fromUtf8(kDatos) + QStringLiteral(
            "INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, C_BANCO, "
            "operadora, tipo_servicio, g2) VALUES ('20200229', 1, 12, 80, 79, 2, '0134', '1', 50, 4);");
        Mesa<CALCULOS01> t(filas, "CALCULOS01");
        t.cargar(QStringLiteral("2025"), QStringLiteral("3"));
        QCOMPARE(t.pies(t.p->GRID, {1, 2}), QStringList({"4", "1.195"}));
        QCOMPARE(t.p->Celdas.Value(2, 2).texto(), QStringLiteral("180"));
        Mesa<CALCULOS01_USDT> u(filas, "CALCULOS01_USDT");
        u.cargar(QStringLiteral("2025"), QStringLiteral("2"));
        QCOMPARE(u.p->Celdas.Value(9, 2).texto(), QStringLiteral("40"));

        const QList<QPair<QString, QString>> textos = {
            {"2025", ""}, {"", "03"}, {"", ""}, {"abcd", "03"}, {"2025", "13"}, {"2025", "00"},
            {"2025", "0"}, {"25", "03"}, {"25", "3"}, {"2025", " 3"}, {"2025", "3 "}, {"20", "2503"},
            {"2025", "031"}, {"202", "503"}, {"202", "52"}, {"202", "02"}};
        auto sinDatos = [](auto& tablero, const QPair<QString, QString>& texto) {
            try {
                tablero.cargar(texto.first, texto.second);
            } catch (const FalloEjecucion& e) {
                QFAIL(qPrintable(QStringLiteral("%1/%2: %3").arg(texto.first, texto.second, e.what())));
            }
            for (int f = 0; f < tablero.p->Celdas.filas(); ++f)
                QCOMPARE(tablero.p->Celdas.Value(f, 2).texto(), QString());
            QCOMPARE(tablero.p->Celdas1.filas(), 0);
        };
        for (const auto& texto : textos) {
            sinDatos(t, texto);
            sinDatos(u, texto);
        }
    }

    void meses_cortos_y_mes_sin_datos()
    {
        Mesa<CALCULOS01> t(kDatos, "CALCULOS01");
        CALCULOS01* p = t.p;
        t.cargar(QStringLiteral("2025"), QStringLiteral("2")); // sent as 20252: February
        QCOMPARE(p->Celdas.filas(), 28);
        QCOMPARE(t.columna(p->Celdas1, 2), QStringList({"40"}));
        t.cargar(QStringLiteral("2024"), QStringLiteral("02"));
        QCOMPARE(p->Celdas.filas(), 29);
        QCOMPARE(p->Celdas.Value(28, 1).texto(), QStringLiteral("Jue"));
        t.cargar(QStringLiteral("2025"), QStringLiteral("13")); // no such month: no calendar
        QCOMPARE(p->Celdas.filas(), 0);

        // A month with data, then one without: the calendar stands alone, the
        // balance is emptied, the average and the footers that the layout
        // does not blank keep the former month's texts.
        t.cargar(QStringLiteral("2025"), QStringLiteral("03"));
        t.cargar(QStringLiteral("2025"), QStringLiteral("04"));
        QCOMPARE(p->Celdas.filas(), 30);
        QCOMPARE(t.fila(p->Celdas, 29, {0, 1, 2, 3, 4}), QStringList({"30", "Mie", "", "", ""}));
        for (const Celdas* c : {&p->Celdas1, &p->Celdas2, &p->Celdas4, &p->Celdas5})
            QCOMPARE(c->filas(), 0);
        QCOMPARE(p->Text1[6]->text(), QString());
        QCOMPARE(p->Text1[5]->text(), QStringLiteral("299"));
        QCOMPARE(t.pies(p->GRID, {0, 1, 2, 3, 4, 5, 6}), QStringList({"", "", "", "", "", "2,18", "26"}));
        QCOMPARE(t.pies(p->GRID2, {0, 2, 4}), QStringList({"", "", "7"}));
        QCOMPARE(t.pies(p->GRID5, {2}), QStringList({"1.195"}));
        p->GRID2_HeadClick(1); // an empty grid sorts nothing
        QCOMPARE(p->Celdas2.filas(), 0);

        // What is typed travels as a value: no calendar, no rows, nothing else run.
        t.cargar(QStringLiteral("2025'; DELETE FROM MOVIMIENTOS; --"), QStringLiteral("03"));
        QCOMPARE(p->Celdas.filas(), 0);
        QCOMPARE(p->Celdas1.filas(), 0);
        QCOMPARE(t.s.base.valor(QStringLiteral("SELECT count(*) FROM MOVIMIENTOS")), QStringLiteral("9"));
    }

    void filtros_operadora_y_servicio()
    {
        Mesa<CALCULOS01> t(kDatos, "CALCULOS01");
        CALCULOS01* p = t.p;
        t.cargar(QStringLiteral("2025"), QStringLiteral("03"));
        auto recibido = [p] { return p->GRID->Columns(2).FooterText(); };

        p->Option2[2]->click(); // second operator: 03/2 and 20/1
        QCOMPARE(recibido(), QStringLiteral("50"));
        // The shared day counter ends as the load leaves it: the days of directs.
        QCOMPARE(t.s.m->J.aTexto(), QStringLiteral("1"));
        p->Option2[0]->click();
        QCOMPARE(recibido(), QStringLiteral("1.195"));

        // the service as the index of a box (a number) and as a code of the list (a text)
        p->Option3[2]->click();
        QCOMPARE(t.s.m->L.aTexto(), QStringLiteral("2"));
        QCOMPARE(recibido(), QStringLiteral("1.050"));
        p->Combo1->setCurrentIndex(1);
        emit p->Combo1->activated(1);
        QCOMPARE(t.s.m->L.aTexto(), QStringLiteral("01"));
        QCOMPARE(recibido(), QStringLiteral("120"));
        QCOMPARE(t.columna(p->Celdas5, 0), QStringList({"01"}));
        // 98: every service of sw_calculos 1; 99: those of sw_calculos 2
        p->Combo1->setCurrentIndex(p->Combo1->count() - 2);
        emit p->Combo1->activated(p->Combo1->count() - 2);
        QCOMPARE(recibido(), QStringLiteral("1.170"));
        p->Combo1->setCurrentIndex(p->Combo1->count() - 1);
        emit p->Combo1->activated(p->Combo1->count() - 1);
        QCOMPARE(recibido(), QStringLiteral("25"));
        QCOMPARE(p->Celdas.Value(30, 2).texto(), QStringLiteral("25"));
        // The last click wins: the box of "Zelle" again, though the list still shows 99.
        p->Option3[0]->click();
        p->Option3[2]->click();
        QCOMPARE(recibido(), QStringLiteral("1.050"));
        QCOMPARE(p->Combo1->currentText().left(2), QStringLiteral("99"));

        // The keyboard works as the mouse: an arrow in the list picks the
        // entry above and loads it; Enter on "Carga Info" reloads.
        p->Combo1->setFocus();
        QTest::keyClick(p->Combo1, Qt::Key_Up);
        QCOMPARE(t.s.m->L.aTexto(), QStringLiteral("98"));
        QCOMPARE(recibido(), QStringLiteral("1.170"));
        p->Text1[3]->setText(QStringLiteral("02"));
        QTest::keyClick(p->CARGA_DATOS, Qt::Key_Return);
        QCOMPARE(p->Celdas.filas(), 28);
        QCOMPARE(recibido(), QString());
    }

    // A screen reader hears each footer as its column's heading and the
    // figure in view; a footer emptied by a load has no figure to tell.
    void pies_para_lectores_de_pantalla()
    {
        Mesa<CALCULOS01> t(kDatos, "CALCULOS01");
        CALCULOS01* p = t.p;
        const auto oido = [p](int col, QAccessible::Text que = QAccessible::Name) {
            QAccessibleInterface* i = QAccessible::queryAccessibleInterface(p->GRID->pie(col));
            return i ? i->text(que) : QStringLiteral("(sin interfaz)");
        };
        const auto pie = [p](int col) { return p->GRID->Columns(col).FooterText(); };
        t.cargar(QStringLiteral("2025"), QStringLiteral("03"));
        QCOMPARE(pie(2), QStringLiteral("1.195"));
        QCOMPARE(oido(2), QStringLiteral("Recibido: 1.195"));
        QCOMPARE(oido(2, QAccessible::Description), QStringLiteral("Pie de la columna Recibido"));
        QVERIFY(!pie(5).isEmpty());
        QCOMPARE(oido(5), QStringLiteral("%: ") + pie(5));
        // The weekday has no heading: its footer, the days with data, by the column's place.
        QCOMPARE(oido(1), QStringLiteral("4"));
        QCOMPARE(oido(1, QAccessible::Description), QStringLiteral("Pie de la columna 2"));

        p->Option2[2]->click(); // the second operator's figures
        QCOMPARE(pie(2), QStringLiteral("50"));
        QCOMPARE(oido(2), QStringLiteral("Recibido: 50"));
        t.cargar(QStringLiteral("2025"), QStringLiteral("04"));
        QCOMPARE(oido(2), QStringLiteral("Recibido"));
        QCOMPARE(oido(1), QString());
        // A footer the load leaves in view is heard as it is seen.
        QVERIFY(!pie(6).isEmpty());
        QCOMPARE(oido(6), QStringLiteral("Tot-G: ") + pie(6));
    }

    void orden_de_cabeceras()
    {
        Mesa<CALCULOS01> t(kDatos, "CALCULOS01");
        CALCULOS01* p = t.p;
        t.cargar(QStringLiteral("2025"), QStringLiteral("03"));
        p->GRID_HeadClick(2); // received, from the largest down, twice the same
        p->GRID_HeadClick(2);
        QCOMPARE(t.columna(p->Celdas, 0).mid(0, 3), QStringList({"15", "03", "31"}));
        QCOMPARE(p->Celdas.Value(30, 0).texto(), QStringLiteral("20"));
        QCOMPARE(p->GRID->Columns(2).FooterText(), QStringLiteral("1.195"));
        p->GRID_HeadClick(1); // weekday, as text, descending
        QCOMPARE(p->Celdas.Value(0, 1).texto(), QStringLiteral("Vie"));
        QCOMPARE(p->Celdas.Value(30, 1).texto(), QStringLiteral("Dom"));
        p->GRID_HeadClick(0); // "Dia": day 31 first, and no way back but a reload
        p->GRID_HeadClick(0);
        QCOMPARE(p->Celdas.Value(0, 0).texto(), QStringLiteral("31"));
        QCOMPARE(p->Celdas.Value(30, 0).texto(), QStringLiteral("01"));

        p->GRID2_HeadClick(1); // names ascending
        QCOMPARE(t.columna(p->Celdas2, 1), QStringList({"99", "JOSE DIAZ", "MARIA PEREZ"}));
        p->GRID2_HeadClick(4); // transactions descending
        p->GRID2_HeadClick(4);
        QCOMPARE(t.columna(p->Celdas2, 4), QStringList({"4", "2", "1"}));
        // the grids of providers, banks and services keep the server's order
        emit p->GRID1->HeadClick(2);
        QCOMPARE(t.columna(p->Celdas1, 0).first(), QStringLiteral("0001"));
    }

    void resumen_del_ano()
    {
        Mesa<Resumen_mensual> t(kDatos, "Resumen_mensual");
        Resumen_mensual* p = t.p;
        QVERIFY(p->Text1[1]->isVisibleTo(p) && !p->Text1[3]->isVisibleTo(p) && !p->Text1[6]->isVisibleTo(p));
        t.cargar(QStringLiteral("2025"), QStringLiteral("07"));
        const Celdas& c = p->Celdas;
        QCOMPARE(c.filas(), 12);
        QCOMPARE(t.fila(c, 0, {0, 1, 2}), QStringList({"2025-01", "202501", ""}));
        QCOMPARE(t.fila(c, 1, {0, 2, 4, 5, 6}), QStringList({"2025-02", "40", "1", "2,53", "1"}));
        QCOMPARE(t.fila(c, 2, {0, 2, 3, 4, 5, 6}), QStringList({"2025-03", "1.195", "1.050", "7", "2,18", "26"}));
        QCOMPARE(t.pies(p->GRID, {1, 2, 3, 4, 5, 6}), QStringList({"", "1.235", "1.050", "8", "2,19", "27"}));
        QCOMPARE(p->Total_Fijo, 1234.5);
        // the hidden balance: the year's percentage less the directs
        QCOMPARE(p->Text1[6]->text(), QStringLiteral("-1.048"));
        QCOMPARE(t.columna(p->Celdas5, 0), QStringList({"02", "01", "50", "55"}));
        QCOMPARE(t.columna(p->Celdas5, 3), QStringList({"85,05", "9,72", "3,20", "2,03"}));
        QCOMPARE(p->GRID->Columns(1).Width(), 8);
        QCOMPARE(p->GRID2->Columns(1).Width(), 2500);

        // A key that no row holds leaves the row found last.
        p->Busca_Fila(QStringLiteral("202503"));
        QCOMPARE(p->Fila, 2);
        p->Busca_Fila(QStringLiteral("209912"));
        QCOMPARE(p->Fila, 2);

        // A year with no movements: the twelve months, nothing written under them.
        t.cargar(QStringLiteral("2023"), QString());
        QCOMPARE(p->Celdas.filas(), 12);
        QCOMPARE(t.pies(p->GRID, {2, 3}), QStringList({"", ""}));
        // Unlike the daily screen, the layout leaves the transactions' footer too.
        QCOMPARE(t.pies(p->GRID, {4, 5, 6}), QStringList({"8", "2,19", "27"}));
        QCOMPARE(p->Celdas1.filas(), 0);
    }

    void estadisticas_usdt()
    {
        Mesa<CALCULOS01_USDT> t(kDatos, "CALCULOS01_USDT");
        CALCULOS01_USDT* p = t.p;
        QStringList combo;
        for (int i = 0; i < p->Combo1->count(); ++i)
            combo << p->Combo1->itemText(i);
        QCOMPARE(combo, QStringList({"00 - TODOS", "50 - USDT BINANCE", "55 - PESOS COLOMBIA"}));
        t.cargar(QStringLiteral("2025"), QStringLiteral("03"));
        QCOMPARE(p->GRID2->columnas(), 4);
        QCOMPARE(p->GRID->Columns(2).Caption(), QStringLiteral("Enviado"));
        QCOMPARE(p->GRID2->Columns(2).Caption(), QStringLiteral("Enviado "));
        QCOMPARE(p->GRID2->Columns(1).Width(), 3500);
        QCOMPARE(p->Celdas.Value(30, 2).texto(), QStringLiteral("100.000")); // what was sent
        QCOMPARE(t.fila(p->Celdas2, 0, {0, 1, 2, 3}), QStringList({"0012", "MARIA PEREZ", "100.000", "100,00"}));
        QCOMPARE(t.pies(p->GRID2, {0, 2}), QStringList({"1", "100.000"}));
        // no header sort here
        p->GRID_HeadClick(2);
        QCOMPARE(p->Celdas.Value(0, 0).texto(), QStringLiteral("01"));

        // A box of the wallets selects no USDT service: the first set is
        // empty and the load stops there, the other grids as the layout left them.
        p->Option3[3]->click();
        QCOMPARE(t.s.m->L.aTexto(), QStringLiteral("3"));
        QCOMPARE(p->Celdas.filas(), 31);
        QCOMPARE(p->Celdas.Value(30, 2).texto(), QString());
        QCOMPARE(p->Celdas2.filas(), 0);
        QCOMPARE(t.pies(p->GRID2, {0, 2}), QStringList({"", ""}));
        QCOMPARE(p->Text1[6]->text(), QString());
        QVERIFY(!t.s.m->Rs || !t.s.m->Rs->Abierto());
    }

    void resumen_usdt()
    {
        // Rows of this month and of thirteen months ago: only the first are in the twelve months.
        const QString filas = QString::fromUtf8(kDatos) + QStringLiteral(
            "INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, C_BANCO, "
            "operadora, tipo_servicio, g2) VALUES "
            "(strftime('%Y%m01', 'now', 'localtime'), 1, 12, 80, 79, 2, '0134', '1', 50, 4), "
            "(strftime('%Y%m01', 'now', 'localtime', '-13 months'), 1, 12, 70, 69, 2, '0134', '1', 50, 4);");
        Mesa<RESUMEN_MENSUAL_USDT> t(filas, "RESUMEN_MENSUAL_USDT");
        RESUMEN_MENSUAL_USDT* p = t.p;
        for (QLineEdit* e : p->Text1)
            QVERIFY(!e->isVisibleTo(p));
        const Celdas& c = p->Celdas;
        QCOMPARE(c.filas(), 12);
        QCOMPARE(c.Value(11, 1).texto(), QDate::currentDate().toString(QStringLiteral("yyyyMM")));
        QCOMPARE(t.fila(c, 11, {2, 4, 5, 6}), QStringList({"80", "1", "5,00", "4"}));
        QCOMPARE(t.pies(p->GRID, {2, 5}), QStringList({"80", "5,00"}));
        QCOMPARE(p->GRID2->columnas(), 4);
        QCOMPARE(p->GRID2->Columns(1).Width(), 3000);

        // A service without movements: every set is read, and the guarded
        // percentage leaves 0 where the other screens would stop.
        p->Combo1->setCurrentIndex(2);
        emit p->Combo1->activated(2);
        QCOMPARE(t.pies(p->GRID, {2, 3, 4, 5, 6}), QStringList({"0", "0", "0", "0,00", "0"}));
        QCOMPARE(t.pies(p->GRID1, {0, 2}), QStringList({"0", "0"}));
    }
};

REGISTRAR_PRUEBA(PruebaEstadisticas);
#include "tst_estadisticas.moc"
