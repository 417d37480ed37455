// The two variants of the console: by date of payment (the moment of payment
// where the estimate was, the Zelle bank where the row-changed mark sits, a
// save that never touches the payment's moment) and the USDT console (names
// from the cache, the gain against the day's dollar, the weighted percentage).
// What the three consoles share on an empty grid, and the run-time report.
#include "clientes.h"
#include "f5_usdt.h"
#include "fallo.h"
#include "form2.h"
#include "form2_pago.h"
#include "mensajes.h"
#include "mesa.h"
#include "referencia.h"
#include "prueba.h"

namespace {

using enum Form2_Pago::ColPago;
using enum F5_USDT::ColUsdt;
using enum Consola::Col;

// Console by date of payment, paid on 11/03/2025: 09/03 #2 paid once and
// taken back (not paid, so not listed), row 0 (10/03 #5) Zelle bank 3, row 1
// (10/03 #6) Zelle bank 1, G1 and G2 apart in both; 11/03 #1 is paid on
// 12/03. USDT of 10/03: #1 unpaid with no gain stored, #2 paid at 41,20 with
// 3 %, #3 returned; on 11/03 only a returned one.
const char* const kFilas = R"(
 ('20250310', 5, 13, 200, 188.9, 2, 68000, '0134', 'R555', 360, '2', 1, 1, 5.5, '', 10.39, 9, 0.5,
  '20250311', '10:00:00', 398, 405, '3'),
 ('20250310', 6, 12, 10, 10, 1, 3000, '0134', 'X', 300, '1', 2, 1, 2, '', 0.5, 0.4, 0.2, '20250311', '11:30:00', 1, 1, '1'),
 ('20250309', 2, 12, 20, 18.6, 0, 0, '', '', 0, '1', 2, 1, 100, '', 18.6, 18.6, 0, '20250311', '09:15:00', 1, 1, '0'),
 ('20250311', 1, 12, 30, 28, 0, 9000, '0134', 'Z', 300, '1', 2, 1, 4, '', 1, 1, 0, '20250312', '08:00:00', 1, 1, '0'),
 ('20250310', 1, 12, 100, 98, 0, 0, '', '', 0, '1', 2, 60, 0, '', 7, 7, 0, '', '', 0, 0, '0'),
 ('20250310', 2, 13, 50, 49, 2, 2060, '0134', 'U2', 41.2, '2', 1, 60, 3, '', 1.47, 1.47, 0, '20250310', '12:00:00', 40, 40, '0'),
 ('20250310', 3, 12, 10, 10, 1, 0, '7777', '', 0, '1', 2, 60, 5, '', 0, 0, 0, '', '', 0, 0, '0'),
 ('20250311', 2, 12, 10, 10, 1, 0, '7777', '', 0, '1', 2, 60, 5, '', 0, 0, 0, '', '', 0, 0, '0')
)";

// What the run-time report says when the action fails.
QString reporte(SesionDePrueba& s, const std::function<void()>& accion)
{
    s.mensajes.clear();
    try {
        accion();
    } catch (const FalloEjecucion& f) {
        Mensajes::Reporte_Fallo(f);
    }
    return s.ultimoMensaje();
}

template <class T> struct Consola_De : Mesa<T> {
    Consola_De(const char* nombre, QDate dia) : Mesa<T>(conReferencia(kFilas), nombre, dia, dia) {}
    void consultar(QDate dia) { Mesa<T>::consultar(dia, dia); }
};

} // namespace

class PruebaVariantes : public QObject {
    Q_OBJECT
private slots:
    void por_fecha_de_pago_carga()
    {
        Consola_De<Form2_Pago> c("Form2_Pago", QDate(2025, 3, 11));
        Form2_Pago* p = c.p;
        QCOMPARE(p->Celdas.UpperBound(1), 1);
        // By the hour of payment; the one taken back keeps its day of payment
        // but has no bank, so it is not listed.
        QCOMPARE(c.fila(0, {colFecha, colFechaHoraPago, colZelle}), (QStringList {"10/03/2025", "11/03/2025 10:00:00", "3"}));
        QCOMPARE(c.fila(1, {colFechaHoraPago, colZelle}), (QStringList {"11/03/2025 11:30:00", "1"}));
        // A row never paid shows a blank, not the slashes of an empty date.
        QCOMPARE(Form2_Pago::Fecha_Y_Hora(QString(), QString()), QStringLiteral(" "));

        // Footers: no bolivar estimate under the moment of payment.
        QCOMPARE(c.pies({colRecibido, colPagado, colFechaHoraPago, colG1, colG2}),
                 (QStringList {"198,90", "71.000,00", "", "10,89", "9,40"}));

        // A double click deletes nothing and asks nothing.
        p->GRID->vista()->setCurrentIndex(p->GRID->modelo()->index(0, colCliente));
        emit p->GRID->DblClick();
        QVERIFY(c.s.mensajes.isEmpty());
        QCOMPARE(c.bd({"count(*)"}, 2, "20250309"), QStringLiteral("1"));

        // FIJAR prices every unpaid row without a tick (none is listed here), and sums nothing.
        p->Text4->setText(QStringLiteral("36.5"));
        p->FIJAR->click();
        QCOMPARE(c.columna(colFactor), (QStringList {"360,0000", "300,0000"}));
        QCOMPARE(p->Text5->text(), QString());
    }

    void por_fecha_de_pago_grabar()
    {
        Consola_De<Form2_Pago> c("Form2_Pago", QDate(2025, 3, 11));
        Form2_Pago* p = c.p;
        // One form of statement, whatever the mode: no payment moment, no Zelle bank.
        const QString sentencia = QStringLiteral(
            " UPDATE MOVIMIENTOS SET  recibido =  '188.90', enviado =  '200.00', C_CLIENTE =  '0013', obs =  '', "
            "C_PROVEEDOR =  '0002', pago =  '68000.00', C_BANCO =  '0134', operadora =  '2', REFERENCIA =  'R555', "
            "confirmacion =  '360.0000', tipo_operacion =  '1', ganancia =  '5.50', g1 =  '9.00', g2 =  '9.00', "
            "g3 =  '0', tipo_servicio =  '01' WHERE FECHA=  '20250310' and SECUENCIA = '0005'");
        QCOMPARE(p->Sentencia_Fila(0, QStringLiteral("20250312"), QStringLiteral("09:08:07")), sentencia);
        p->Modo_Grabar = 1;
        QCOMPARE(p->Sentencia_Fila(0, QStringLiteral("20250312"), QStringLiteral("09:08:07")), sentencia);
        p->Modo_Grabar = 0;

        // The Zelle bank 1 is the mark: that row is saved untouched (its g1 takes
        // colG2), the one with bank 3 is not; the payment's moment stays.
        p->ACTUALIZAR->click();
        QCOMPARE(c.bd({"g1", "bancozelle", "fecha_pago", "hora_pago"}, 6, "20250310"), QStringLiteral("0.4|1|20250311|11:30:00"));
        QCOMPARE(c.bd({"g1"}, 5, "20250310"), QStringLiteral("10.39"));

        // "8888": back to unpaid without a statement on the provider.
        c.s.m->SQL.clear();
        c.escribir(0, colCodBanco, QStringLiteral("8888"));
        QCOMPARE(c.s.m->SQL, QString());
        QCOMPARE(c.fila(0, {colCodProveedor, colEstimado, colPorcentaje}), (QStringList {"0000", "68.000,00", "100"}));
        p->ACTUALIZAR->click();
        QCOMPARE(c.bd({"C_BANCO", "pago", "fecha_pago"}, 5, "20250310"), QStringLiteral("|0.0|20250311"));
        // Unpaid, it leaves this console, and the next save goes on without it.
        QCOMPARE(c.columna(colSec), QStringList {"0006"});
        p->ACTUALIZAR->click();
        QCOMPARE(c.bd({"pago", "bancozelle"}, 6, "20250310"), QStringLiteral("3000.0|1"));
        QVERIFY(c.s.mensajes.isEmpty());
    }

    void usdt_carga()
    {
        Consola_De<F5_USDT> c("F5_USDT", QDate(2025, 3, 10));
        F5_USDT* p = c.p;
        QCOMPARE(p->Celdas.UpperBound(1), 2);
        // The name from the cache; the price of the moment and the estimate with decimals.
        // No gain stored: all of what was received is gain.
        QCOMPARE(c.fila(0, {colCliente, colMoneda, colEstimado, colPorcentaje, colGanancia}),
                 (QStringList {"MARIA PEREZ", "41,5000", "4.150,00", "100,00", "98,00"}));
        // Paid: the price it was paid at, its gain on what was received; none for the returned one.
        QCOMPARE(c.fila(1, {colMoneda, colGanancia}) + c.fila(2, {colGanancia}), (QStringList {"41,20", "1,47", ""}));
        // The gain's footer and its percentage weighted by what was received.
        QCOMPARE(c.pies({colGanancia, colPorcentaje}), (QStringList {"99,47", "67,67"}));

        // A day with only a returned row: no gain, empty footers.
        c.consultar(QDate(2025, 3, 11));
        QCOMPARE(c.pies({colGanancia, colPorcentaje}), (QStringList {"", ""}));
        // Without the day's dollar the gain cannot be measured.
        c.s.m->Dolar_Param = 0;
        double precio = 41.5;
        int16_t servicio = 60;
        QVERIFY_THROWS_EXCEPTION(FalloEjecucion, p->CALCULA_PORCENTAJE(precio, servicio));
    }

    void usdt_pago_y_grabar()
    {
        Consola_De<F5_USDT> c("F5_USDT", QDate(2025, 3, 10));
        F5_USDT* p = c.p;
        // Paid by typing the bank: what was sent at the row's price, the gain
        // as the distance of that price from the day's dollar of 40.
        c.escribir(0, colCodBanco, QStringLiteral("0134"));
        QCOMPARE(c.fila(0, {colPagado, colPorcentaje, colGanancia}), (QStringList {"4.150,00", "3,75", "98,00"}));
        QCOMPARE(p->Sentencia_Fila(0, QStringLiteral("20250312"), QStringLiteral("09:08:07")),
                 QStringLiteral(" UPDATE MOVIMIENTOS SET  recibido =  '98.00', enviado =  '100.00', C_CLIENTE =  '0012', "
                                "obs =  '', C_PROVEEDOR =  '0000', pago =  '4150.00', C_BANCO =  '0134', operadora =  '1', "
                                "REFERENCIA =  '', confirmacion =  '41.5000', tipo_operacion =  '2', ganancia =  '3.75', "
                                "tipo_servicio =  '60' WHERE FECHA=  '20250310' and SECUENCIA = '0001'"));
        p->ACTUALIZAR->click();
        QCOMPARE(c.bd({"C_BANCO", "pago", "ganancia", "g1"}, 1, "20250310"), QStringLiteral("0134|4150.0|3.75|7.0"));

        // "8888" empties the provider too, with no statement of its own.
        c.s.m->SQL.clear();
        c.escribir(1, colCodBanco, QStringLiteral("8888"));
        QCOMPARE(c.s.m->SQL, QString());
        QCOMPARE(c.fila(1, {colCodProveedor, colEstimado, colPorcentaje}), (QStringList {"", "2.060,00", "0"}));
    }

    // A query that finds nothing leaves an empty grid on each console: every
    // head sorts nothing, and saving, fixing, summing and printing a receipt
    // run over no row without a failure.
    void consolas_sin_filas()
    {
        const auto probar = [](Consola* p, SesionDePrueba& s) {
            QVERIFY(p->Celdas.Vacia());
            QCOMPARE(p->GRID->modelo()->rowCount(), 0);
            for (int col = 0; col < p->GRID->columnas(); ++col)
                emit p->GRID->HeadClick(col);
            p->GRID->setBookmark(0);
            QCOMPARE(p->GRID->Bookmark(), -1);
            // ("Copiar Recibo" before any receipt fails by design: no file to copy.)
            for (QPushButton* b : {p->ACTUALIZAR, p->FIJAR, p->Sumarizar, p->RECIBO_PDF, p->RECIBO_XPS})
                if (b->isEnabled())
                    b->click();
            QVERIFY(p->Celdas.Vacia());
            s.mensajes.clear(); // what a console says of an empty selection is its own matter
        };
        const QDate nunca(2030, 1, 1);
        Consola_De<Form2> a("Form2", nunca);
        probar(a.p, a.s);
        Consola_De<Form2_Pago> b("Form2_Pago", nunca);
        probar(b.p, b.s);
        Consola_De<F5_USDT> c("F5_USDT", nunca);
        probar(c.p, c.s);
    }

    void reporte_de_fallos_en_castellano()
    {
        Consola_De<Form2_Pago> c("Form2_Pago", QDate(2025, 3, 11));
        // An amount that is no number, and a service code beyond the services' table.
        QCOMPARE(reporte(c.s, [&] { c.escribir(0, colRecibido, QStringLiteral("abc")); }),
                 QStringLiteral("Se ha producido el error '13' en tiempo de ejecución:\n\nNo coinciden los tipos"));
        QCOMPARE(reporte(c.s, [&] { c.escribir(0, colCodServicio, QStringLiteral("150")); }),
                 QStringLiteral("Se ha producido el error '9' en tiempo de ejecución:\n\nSubíndice fuera del intervalo"));

        // A picture file that is gone by the time it is opened.
        auto* p = c.s.abrir<Clientes>(QStringLiteral("Clientes"));
        p->GRID->setBookmark(0);
        emit p->GRID->Click();
        const QString ruta = c.s.base.carpeta() + QStringLiteral("/no está.png");
        p->Dialogo_ShowOpen = [&] { return ruta; };
        QCOMPARE(reporte(c.s, [&] { p->FOTO->click(); }),
                 QStringLiteral("Se ha producido el error '53' en tiempo de ejecución:\n\nNo se ha encontrado el archivo: ") +
                     ruta);
        // A refusal of the server keeps the server's own words.
        const auto rechazo = [&] { c.s.m->Conexion.Execute(QStringLiteral("UPDATE tabla_que_no_existe SET x = 1")); };
        QString delServidor;
        try {
            rechazo();
        } catch (const FalloEjecucion& f) {
            delServidor = f.texto();
        }
        QVERIFY(!delServidor.isEmpty() && delServidor != FalloEjecucion::Texto(0));
        QVERIFY(reporte(c.s, rechazo).endsWith(QStringLiteral("\n\n") + delServidor));
    }
};

REGISTRAR_PRUEBA(PruebaVariantes);
#include "tst_variantes.moc"
