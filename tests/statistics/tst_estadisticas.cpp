// The statistics screens over crafted rows whose sums are known: the month by
// day with its footers, average and balance, the groupings and their shares,
// the filters, the sorts, the months without data, the year by month and the
// two USDT screens.
#include "calculos01.h"
#include "calculos01_usdt.h"
#include "fallo.h"
#include "mesa.h"
#include "prueba.h"
#include "resumen_mensual.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace {

using C = CALCULOS01;

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

// What a screen shows, as texts: a row of a matrix with its cells joined by
// "|", every row, one column, the footers of a grid, the entries of a list.
template <class F> QStringList lista(int n, F texto)
{
    QStringList r;
    for (int i = 0; i < n; ++i)
        r << texto(i);
    return r;
}
QString fila(const Celdas& c, int f)
{
    return lista(c.UpperBound(2) + 1, [&](int k) { return c.Value(f, k).texto(); }).join('|');
}
QStringList filas(const Celdas& c)
{
    return lista(c.filas(), [&](int f) { return fila(c, f); });
}
QString pies(Rejilla* g)
{
    return lista(g->columnas(), [g](int k) { return g->Columns(k).FooterText(); }).join('|');
}
QStringList opciones(const QComboBox* c)
{
    return lista(c->count(), [c](int i) { return c->itemText(i); });
}

} // namespace

class PruebaEstadisticas : public QObject {
    Q_OBJECT
private slots:
    void primera_activacion()
    {
        Mesa<C> t(QString::fromUtf8(kDatos), "CALCULOS01");
        C* p = t.p;
        const QDate hoy = QDate::currentDate();
        QCOMPARE(p->Text1[C::txtAno]->text(), QString::number(hoy.year()));
        QCOMPARE(p->Text1[C::txtMes]->text(), hoy.toString(QStringLiteral("MM")));
        QVERIFY(p->Option2[C::opTodas]->isChecked());
        // "Trum" stands marked while the figures are those of every service.
        QVERIFY(p->Option3[C::srvTrum]->isChecked());
        QCOMPARE(t.s.m->L.aTexto(), QStringLiteral("0"));
        QCOMPARE(opciones(p->Combo1), QStringList({"00 - TODOS", "01 - TRUMIN", "02 - ZELLE", "50 - USDT BINANCE",
                                                   "55 - PESOS COLOMBIA", "98 - TODOS SW_CALCULO=1", "99 - TODOS SW_CALCULO=2"}));
        QCOMPARE(p->Combo1->currentIndex(), 0);
        QCOMPARE(p->Celdas.filas(), hoy.daysInMonth());
    }

    void mes_dia_por_dia()
    {
        Mesa<C> t(QString::fromUtf8(kDatos), "CALCULOS01");
        t.cargar(QStringLiteral("2025"), QStringLiteral("03"));
        const Celdas& c = t.p->Celdas;
        QCOMPARE(c.filas(), 31);
        // day, weekday, received, directs, transactions, %, gain
        QCOMPARE(fila(c, 0), QStringLiteral("01|Sab|||||"));
        QCOMPARE(fila(c, 2), QStringLiteral("03|Lun|180|50|3|24,44|44,00"));
        QCOMPARE(fila(c, 14), QStringLiteral("15|Sab|1.000|1.000|1|-2,00|-20,00"));
        // a day whose money adds up to less than nothing earns no percentage
        QCOMPARE(fila(c, 19), QStringLiteral("20|Jue|-10||2|0,00|0,00"));
        QCOMPARE(fila(c, 30), QStringLiteral("31|Lun|25||1|8,00|2,00"));
        // the days with data under the weekdays
        QCOMPARE(pies(t.p->GRID), QStringLiteral("|4|1.195|1.050|7|2,18|26"));
        QCOMPARE(t.p->GRID->pie(C::colRecibido)->accessibleName(), QStringLiteral("Recibido: 1.195")); // for screen readers
        QCOMPARE(t.p->Text1[C::txtPromedio]->text(), QStringLiteral("299")); // 1195 over the 4 days with data
        QCOMPARE(t.p->Text1[C::txtBalance]->text(), QStringLiteral("145"));  // received less directs
    }

    // Code, name, money and share of the month's received total, the largest first.
    void agrupaciones_del_mes()
    {
        Mesa<C> t(QString::fromUtf8(kDatos), "CALCULOS01");
        C* p = t.p;
        t.cargar(QStringLiteral("2025"), QStringLiteral("03"));
        QCOMPARE(filas(p->Celdas1), QStringList({"0001|ORINOCO|1.100|92,05", "0002|LLANO|75|6,28", "0000|0|30|2,51",
                                                 "0007|7||0,00", "0003|SUR|-10|0,00"}));
        QCOMPARE(pies(p->GRID1), QStringLiteral("5||1.195|"));
        // the clients with their transactions
        QCOMPARE(filas(p->Celdas2),
                 QStringList({"0013|JOSE DIAZ|1.050|87,87|2", "0012|MARIA PEREZ|145|12,13|4", "0099|99||0,00|1"}));
        QCOMPARE(pies(p->GRID2), QStringLiteral("3||1.195||7"));
        // banks: the paid rows, an unknown code shown as it stands
        QCOMPARE(filas(p->Celdas4),
                 QStringList({"0134|BANESCO|1.125|94,14", "0102|BANCO DE VENEZUELA|50|4,18", "0999|0999||0,00"}));
        QCOMPARE(pies(p->GRID4), QStringLiteral("3||1.175|"));
        // services: no count footer
        QCOMPARE(filas(p->Celdas5), QStringList({"02|ZELLE|1.050|87,87", "01|TRUMIN|120|10,04", "55|PESOS COLOMBIA|25|2,09"}));
        QCOMPARE(pies(p->GRID5), QStringLiteral("||1.195|"));
    }

    void bancos_en_blanco_devoluciones_y_dias_sin_dolares()
    {
        // In April a bank of blanks is no payment, though its gain counts as
        // any unpaid row's; a code is the same bank with blanks around it or
        // without; a return ('7777', blanks aside) counts nowhere, not even
        // as a transaction. In May a day whose money adds up to nothing
        // divides by zero.
        Mesa<C> t(
            QString::fromUtf8(kDatos) +
                QStringLiteral("INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, C_BANCO, "
                               "operadora, tipo_operacion, tipo_servicio, g2) VALUES "
                               "('20250402', 1, 12, 10, 10, 1, '  ', '1', 3, 1, 5), "
                               "('20250402', 2, 12, 20, 20, 1, ' 0134', '1', 3, 1, 3), "
                               "('20250402', 3, 12, 40, 40, 1, '7777', '1', 3, 1, 9), "
                               "('20250402', 4, 12, 5, 5, 1, '0134 ', '1', 3, 1, 1), "
                               "('20250402', 5, 12, 7, 7, 1, '0134', '1', 3, 1, 1), "
                               "('20250402', 6, 12, 100, 100, 1, ' 7777', '1', 3, 1, 50), "
                               "('20250402', 7, 12, 200, 200, 1, '7777 ', '1', 3, 1, 50), "
                               "('20250501', 1, 12, 0, 0, 0, '', '1', 2, 1, 0);"),
            "CALCULOS01");
        C* p = t.p;
        t.cargar(QStringLiteral("2025"), QStringLiteral("04"));
        // received, directs (paid ones only), transactions, %, gain
        QCOMPARE(fila(p->Celdas, 1), QStringLiteral("02|Mie|42|32|4|23,81|10,00"));
        QCOMPARE(filas(p->Celdas4), QStringList {"0134|BANESCO|32|76,19"});
        QCOMPARE(pies(p->GRID1), QStringLiteral("1||42|"));
        p->Text1[C::txtMes]->setText(QStringLiteral("05"));
        QVERIFY_THROWS_EXCEPTION(FalloEjecucion, p->Carga_Estadistica());
    }

    void periodos_que_no_nombran_un_mes()
    {
        // A month typed with one digit is that month; a text that names no
        // month shows nothing and never another month's money, on the daily
        // screen and on its USDT copy alike. A row on 29/02/2020, which a
        // year typed "202" with month "02" would reach as the text 20202.
        const QString filas =
            QString::fromUtf8(kDatos) +
            QStringLiteral("INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, C_BANCO, "
                           "operadora, tipo_servicio, g2) VALUES ('20200229', 1, 12, 80, 79, 2, '0134', '1', 50, 4);");
        Mesa<C> t(filas, "CALCULOS01");
        t.cargar(QStringLiteral("2025"), QStringLiteral("3"));
        QCOMPARE(pies(t.p->GRID), QStringLiteral("|4|1.195|1.050|7|2,18|26"));
        QCOMPARE(t.p->Celdas.Value(2, C::colRecibido).texto(), QStringLiteral("180"));
        Mesa<CALCULOS01_USDT> u(filas, "CALCULOS01_USDT");
        u.cargar(QStringLiteral("2025"), QStringLiteral("2"));
        QCOMPARE(u.p->Celdas.Value(9, C::colRecibido).texto(), QStringLiteral("40"));

        const QList<QPair<QString, QString>> textos = {{"2025", ""},    {"", "03"},     {"", ""},       {"abcd", "03"},
                                                       {"2025", "13"},  {"2025", "00"}, {"2025", "0"},  {"25", "03"},
                                                       {"25", "3"},     {"2025", " 3"}, {"2025", "3 "}, {"20", "2503"},
                                                       {"2025", "031"}, {"202", "503"}, {"202", "52"},  {"202", "02"}};
        auto sinDatos = [](auto& tablero, const QPair<QString, QString>& texto) {
            try {
                tablero.cargar(texto.first, texto.second);
            } catch (const FalloEjecucion& e) {
                QFAIL(qPrintable(QStringLiteral("%1/%2: %3").arg(texto.first, texto.second, e.what())));
            }
            QCOMPARE(Mesa<C>::columna(tablero.p->Celdas, C::colRecibido), QStringList(tablero.p->Celdas.filas(), QString()));
            QCOMPARE(tablero.p->Celdas1.filas(), 0);
        };
        for (const auto& texto : textos) {
            sinDatos(t, texto);
            sinDatos(u, texto);
        }
    }

    void meses_cortos_y_mes_sin_datos()
    {
        Mesa<C> t(QString::fromUtf8(kDatos), "CALCULOS01");
        C* p = t.p;
        t.cargar(QStringLiteral("2025"), QStringLiteral("2")); // sent as 20252: February
        QCOMPARE(p->Celdas.filas(), 28);
        QCOMPARE(Mesa<C>::columna(p->Celdas1, C::grpRecibido), QStringList({"40"}));
        t.cargar(QStringLiteral("2024"), QStringLiteral("02"));
        QCOMPARE(p->Celdas.filas(), 29);
        QCOMPARE(p->Celdas.Value(28, C::colSemana).texto(), QStringLiteral("Jue"));
        t.cargar(QStringLiteral("2025"), QStringLiteral("13")); // no such month: no calendar
        QCOMPARE(p->Celdas.filas(), 0);

        // A month with data, then one without: the calendar stands alone, the
        // balance is emptied, the average and the footers that the layout
        // does not blank keep the former month's texts.
        t.cargar(QStringLiteral("2025"), QStringLiteral("03"));
        t.cargar(QStringLiteral("2025"), QStringLiteral("04"));
        QCOMPARE(p->Celdas.filas(), 30);
        QCOMPARE(fila(p->Celdas, 29), QStringLiteral("30|Mie|||||"));
        for (const Celdas* c : {&p->Celdas1, &p->Celdas2, &p->Celdas4, &p->Celdas5})
            QCOMPARE(c->filas(), 0);
        QCOMPARE(p->Text1[C::txtBalance]->text(), QString());
        QCOMPARE(p->Text1[C::txtPromedio]->text(), QStringLiteral("299"));
        QCOMPARE(pies(p->GRID), QStringLiteral("|||||2,18|26"));
        QCOMPARE(pies(p->GRID2), QStringLiteral("||||7"));
        QCOMPARE(pies(p->GRID5), QStringLiteral("||1.195|"));
        p->GRID2_HeadClick(C::grpNombre); // an empty grid sorts nothing
        QCOMPARE(p->Celdas2.filas(), 0);

        // What is typed travels as a value: no calendar, no rows, nothing else run.
        t.cargar(QStringLiteral("2025'; DELETE FROM MOVIMIENTOS; --"), QStringLiteral("03"));
        QCOMPARE(p->Celdas.filas(), 0);
        QCOMPARE(p->Celdas1.filas(), 0);
        QCOMPARE(t.s.base.valor(QStringLiteral("SELECT count(*) FROM MOVIMIENTOS")), QStringLiteral("9"));
    }

    void filtros_operadora_y_servicio()
    {
        Mesa<C> t(QString::fromUtf8(kDatos), "CALCULOS01");
        C* p = t.p;
        t.cargar(QStringLiteral("2025"), QStringLiteral("03"));
        auto recibido = [p] { return p->GRID->Columns(C::colRecibido).FooterText(); };
        auto elegir = [p](int indice) {
            p->Combo1->setCurrentIndex(indice);
            emit p->Combo1->activated(indice);
        };

        p->Option2[C::opNoelina]->click(); // 03/2 and 20/1
        QCOMPARE(recibido(), QStringLiteral("50"));
        // The shared day counter ends as the load leaves it: the days of directs.
        QCOMPARE(t.s.m->J.aTexto(), QStringLiteral("1"));
        p->Option2[C::opTodas]->click();
        QCOMPARE(recibido(), QStringLiteral("1.195"));

        // the service as the index of a box (a number) and as a code of the list (a text)
        p->Option3[C::srvZelle]->click();
        QCOMPARE(t.s.m->L.aTexto(), QStringLiteral("2"));
        QCOMPARE(recibido(), QStringLiteral("1.050"));
        elegir(1);
        QCOMPARE(t.s.m->L.aTexto(), QStringLiteral("01"));
        QCOMPARE(recibido(), QStringLiteral("120"));
        QCOMPARE(Mesa<C>::columna(p->Celdas5, C::grpCodigo), QStringList({"01"}));
        // 98: every service of sw_calculos 1; 99: those of sw_calculos 2
        elegir(p->Combo1->count() - 2);
        QCOMPARE(recibido(), QStringLiteral("1.170"));
        elegir(p->Combo1->count() - 1);
        QCOMPARE(recibido(), QStringLiteral("25"));
        QCOMPARE(p->Celdas.Value(30, C::colRecibido).texto(), QStringLiteral("25"));
        // The last click wins: the box of "Zelle" again, though the list still shows 99.
        p->Option3[C::srvTodos]->click();
        p->Option3[C::srvZelle]->click();
        QCOMPARE(recibido(), QStringLiteral("1.050"));
        QCOMPARE(p->Combo1->currentText().left(2), QStringLiteral("99"));

        // The keyboard works as the mouse: an arrow in the list picks the
        // entry above and loads it; Enter on "Carga Info" reloads.
        p->Combo1->setFocus();
        QTest::keyClick(p->Combo1, Qt::Key_Up);
        QCOMPARE(t.s.m->L.aTexto(), QStringLiteral("98"));
        QCOMPARE(recibido(), QStringLiteral("1.170"));
        p->Text1[C::txtMes]->setText(QStringLiteral("02"));
        QTest::keyClick(p->CARGA_DATOS, Qt::Key_Return);
        QCOMPARE(p->Celdas.filas(), 28);
        QCOMPARE(recibido(), QString());
    }

    void orden_de_cabeceras()
    {
        Mesa<C> t(QString::fromUtf8(kDatos), "CALCULOS01");
        C* p = t.p;
        t.cargar(QStringLiteral("2025"), QStringLiteral("03"));
        p->GRID_HeadClick(C::colRecibido); // from the largest down, twice the same
        p->GRID_HeadClick(C::colRecibido);
        QCOMPARE(Mesa<C>::columna(p->Celdas, C::colDia).mid(0, 3), QStringList({"15", "03", "31"}));
        QCOMPARE(p->Celdas.Value(30, C::colDia).texto(), QStringLiteral("20"));
        QCOMPARE(p->GRID->Columns(C::colRecibido).FooterText(), QStringLiteral("1.195"));
        p->GRID_HeadClick(C::colSemana); // as text, descending
        QCOMPARE(p->Celdas.Value(0, C::colSemana).texto(), QStringLiteral("Vie"));
        QCOMPARE(p->Celdas.Value(30, C::colSemana).texto(), QStringLiteral("Dom"));
        p->GRID_HeadClick(C::colDia); // day 31 first, and no way back but a reload
        p->GRID_HeadClick(C::colDia);
        QCOMPARE(p->Celdas.Value(0, C::colDia).texto(), QStringLiteral("31"));
        QCOMPARE(p->Celdas.Value(30, C::colDia).texto(), QStringLiteral("01"));

        p->GRID2_HeadClick(C::grpNombre); // names ascending
        QCOMPARE(Mesa<C>::columna(p->Celdas2, C::grpNombre), QStringList({"99", "JOSE DIAZ", "MARIA PEREZ"}));
        p->GRID2_HeadClick(C::grpCuantos); // transactions descending
        p->GRID2_HeadClick(C::grpCuantos);
        QCOMPARE(Mesa<C>::columna(p->Celdas2, C::grpCuantos), QStringList({"4", "2", "1"}));
        // the grids of providers, banks and services keep the server's order
        emit p->GRID1->HeadClick(C::grpRecibido);
        QCOMPARE(Mesa<C>::columna(p->Celdas1, C::grpCodigo).first(), QStringLiteral("0001"));
    }

    void resumen_del_ano()
    {
        Mesa<Resumen_mensual> t(QString::fromUtf8(kDatos), "Resumen_mensual");
        Resumen_mensual* p = t.p;
        QVERIFY(p->Text1[C::txtAno]->isVisibleTo(p) && !p->Text1[C::txtMes]->isVisibleTo(p) &&
                !p->Text1[C::txtBalance]->isVisibleTo(p));
        t.cargar(QStringLiteral("2025"), QStringLiteral("07"));
        // month, its hidden key, received, directs, transactions, %, gain
        QCOMPARE(p->Celdas.filas(), 12);
        QCOMPARE(fila(p->Celdas, 0), QStringLiteral("2025-01|202501|||||"));
        QCOMPARE(fila(p->Celdas, 1), QStringLiteral("2025-02|202502|40||1|2,53|1"));
        QCOMPARE(fila(p->Celdas, 2), QStringLiteral("2025-03|202503|1.195|1.050|7|2,18|26"));
        QCOMPARE(pies(p->GRID), QStringLiteral("||1.235|1.050|8|2,19|27"));
        QCOMPARE(p->Total_Fijo, 1234.5);
        // the hidden balance: the year's percentage less the directs
        QCOMPARE(p->Text1[C::txtBalance]->text(), QStringLiteral("-1.048"));
        QCOMPARE(filas(p->Celdas5), QStringList({"02|ZELLE|1.050|85,05", "01|TRUMIN|120|9,72", "50|USDT BINANCE|40|3,20",
                                                 "55|PESOS COLOMBIA|25|2,03"}));

        // A key that no row holds leaves the row found last.
        p->Busca_Fila(QStringLiteral("202503"));
        QCOMPARE(p->Fila, 2);
        p->Busca_Fila(QStringLiteral("209912"));
        QCOMPARE(p->Fila, 2);

        // A year with no movements: the twelve months, nothing written under
        // them. Unlike the daily screen, the layout leaves the transactions'
        // footer too.
        t.cargar(QStringLiteral("2023"), QString());
        QCOMPARE(p->Celdas.filas(), 12);
        QCOMPARE(pies(p->GRID), QStringLiteral("||||8|2,19|27"));
        QCOMPARE(p->Celdas1.filas(), 0);
    }

    void estadisticas_usdt()
    {
        Mesa<CALCULOS01_USDT> t(QString::fromUtf8(kDatos), "CALCULOS01_USDT");
        CALCULOS01_USDT* p = t.p;
        QCOMPARE(opciones(p->Combo1), QStringList({"00 - TODOS", "50 - USDT BINANCE", "55 - PESOS COLOMBIA"}));
        t.cargar(QStringLiteral("2025"), QStringLiteral("03"));
        QCOMPARE(p->GRID2->columnas(), 4); // no count of transactions
        QCOMPARE(p->GRID->Columns(C::colRecibido).Caption(), QStringLiteral("Enviado"));
        QCOMPARE(p->GRID2->Columns(C::grpRecibido).Caption(), QStringLiteral("Enviado "));
        QCOMPARE(p->Celdas.Value(30, C::colRecibido).texto(), QStringLiteral("100.000")); // what was sent
        QCOMPARE(filas(p->Celdas2), QStringList {"0012|MARIA PEREZ|100.000|100,00"});
        QCOMPARE(pies(p->GRID2), QStringLiteral("1||100.000|"));
        // no header sort here
        p->GRID_HeadClick(C::colRecibido);
        QCOMPARE(p->Celdas.Value(0, C::colDia).texto(), QStringLiteral("01"));

        // A box of the wallets selects no USDT service: the first set is
        // empty and the load stops there, the other grids as the layout left them.
        p->Option3[C::srvZinli]->click();
        QCOMPARE(t.s.m->L.aTexto(), QStringLiteral("3"));
        QCOMPARE(p->Celdas.filas(), 31);
        QCOMPARE(p->Celdas.Value(30, C::colRecibido).texto(), QString());
        QCOMPARE(p->Celdas2.filas(), 0);
        QCOMPARE(pies(p->GRID2), QStringLiteral("|||"));
        QCOMPARE(p->Text1[C::txtBalance]->text(), QString());
        QVERIFY(!t.s.m->Rs || !t.s.m->Rs->Abierto());
    }

    void resumen_usdt()
    {
        // Rows of this month and of thirteen months ago: only the first are in the twelve months.
        const QString filas =
            QString::fromUtf8(kDatos) +
            QStringLiteral("INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, C_BANCO, "
                           "operadora, tipo_servicio, g2) VALUES "
                           "(strftime('%Y%m01', 'now', 'localtime'), 1, 12, 80, 79, 2, '0134', '1', 50, 4), "
                           "(strftime('%Y%m01', 'now', 'localtime', '-13 months'), 1, 12, 70, 69, 2, '0134', '1', 50, 4);");
        Mesa<RESUMEN_MENSUAL_USDT> t(filas, "RESUMEN_MENSUAL_USDT");
        RESUMEN_MENSUAL_USDT* p = t.p;
        for (QLineEdit* e : p->Text1)
            QVERIFY(!e->isVisibleTo(p));
        QCOMPARE(p->Celdas.filas(), 12);
        QCOMPARE(fila(p->Celdas, 11),
                 QDate::currentDate().toString(QStringLiteral("yyyy-MM|yyyyMM")) + QStringLiteral("|80||1|5,00|4"));
        QCOMPARE(pies(p->GRID), QStringLiteral("||80|0|1|5,00|4"));
        QCOMPARE(p->GRID2->columnas(), 4);

        // A service without movements: every set is read, and the guarded
        // percentage leaves 0 where the other screens would stop.
        p->Combo1->setCurrentIndex(2);
        emit p->Combo1->activated(2);
        QCOMPARE(pies(p->GRID), QStringLiteral("||0|0|0|0,00|0"));
        QCOMPARE(pies(p->GRID1), QStringLiteral("0||0|"));
    }
};

REGISTRAR_PRUEBA(PruebaEstadisticas);
#include "tst_estadisticas.moc"
