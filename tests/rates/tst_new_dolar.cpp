// The rate panel: the day's amounts worked out from the dollar and the USDT
// prices, stored, and seen by the consoles and the entry screen; the USDT
// prices and the providers' notifications on the same panel.
#include "escribir.h"
#include "fallo_esperado.h"
#include "form2.h"
#include "login.h"
#include "movimientos.h"
#include "new_dolar.h"
#include "por_menu.h"
#include "prueba.h"
#include "sesion.h"

#include <QDateEdit>
#include <QFrame>
#include <QLabel>
#include <QPushButton>

namespace {

using P = NEW_DOLAR;

// Services and USDT prices laid out for the calculation. The dollar comes from
// the first USDT row (123,4567 shown as 123,46), the base from the second (40).
const char* const kTarifas = R"(
INSERT INTO servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, MONTO) VALUES
  (1, 'DOS', 10, 2, 1, 'T', 1), (2, 'TRES', 10, 3, 1, 'Z', 2), (3, 'CUATRO', 10.5, 4, 1, 'I', 3),
  (4, 'CERO', 10.5, 0, 1, 'A', 4), (5, 'CORTO', 90, 2, 1, 'C', 5), (6, 'SIN USDT', 0, 2, 2, 'S', 6),
  (49, 'BAJO', 0, 4, 2, 'B', 49), (50, 'DIVIDE 1', 3, 4, 2, 'U', 50), (51, 'DIVIDE 2', 5, 4, 2, 'D', 51),
  (52, 'DIVIDE 7', 0, 4, 2, 'E', 52), (53, 'PRECIO CERO', 0, 4, 2, 'F', 53), (54, 'DOBLE', 0, 4, 2, 'G', 54);
INSERT INTO servicios_usdt (C_SERVIcio, D_SERVIcio, compra, venta, equivalencia, div) VALUES
  (1, 'DOLAR', 123.4567, 124, 0, 0), (2, 'BASE', 40, 41, 0, 0), (3, 'A 50', 3, 3, 50, 1),
  (4, 'A 51', 50, 50, 51, 2), (5, 'A 52', 10, 10, 52, 7), (6, 'A 53', 0, 0, 53, 1),
  (7, 'A 54 PRIMERO', 8, 8, 54, 1), (8, 'A 54 LUEGO', 80, 80, 54, 2), (9, 'A 49', 4, 4, 49, 1);
INSERT INTO parametros (Clave, Fecha, Fecha_Compraventas, Dolar) VALUES ('1234', '2020-01-01 00:00:00', '2020-01-01 00:00:00', 120);
)";

QStringList columna(const Celdas& c, int col)
{
    QStringList r;
    for (int i : c.Filas())
        r << c.Value(i, col).texto();
    return r;
}

// Nothing stored: the services' amounts and the dollar as kTarifas laid them.
void nadaGuardado(const BaseTemporal& base)
{
    QCOMPARE(base.valor(QStringLiteral("select group_concat(MONTO, ' ') from (select MONTO from servicios order by C_SERVIcio)")),
             QStringLiteral("1.0 2.0 3.0 4.0 5.0 6.0 49.0 50.0 51.0 52.0 53.0 54.0"));
    QCOMPARE(base.valor(QStringLiteral("select Fecha || ' ' || Dolar from parametros")),
             QStringLiteral("2020-01-01 00:00:00 120.0"));
}

// F6, as the operator opens it.
NEW_DOLAR* abrirPanel(SesionDePrueba& s) { return abrirPorMenu<NEW_DOLAR>(s, "PRECIO_DOLAR", "NEW_DOLAR"); }

// The panel over kTarifas alone.
struct Panel {
    SesionDePrueba s {false};
    NEW_DOLAR* p = nullptr;
    Panel()
    {
        s.base.sql(QString::fromUtf8(kTarifas));
        LOGIN::Carga_Parametros(*s.m);
        p = abrirPanel(s);
    }
};

} // namespace

class PruebaNewDolar : public QObject {
    Q_OBJECT
private slots:
    void carga_del_panel()
    {
        Panel t;
        NEW_DOLAR* p = t.p;
        QVERIFY(p);
        QCOMPARE(p->Text1->text(), QStringLiteral("120"));
        QCOMPARE(p->Label1[P::lblUltima]->text(), QStringLiteral("Ultima actualización de los valores = 01/01/2020 00:00:00"));
        QVERIFY(p->Label1[P::lblAhora]->text().startsWith(QStringLiteral("Actualización de los Valores al : ")));
        QCOMPARE(columna(p->Celdas, P::colMontoActual), QStringList(12, QString()));
        QCOMPARE(p->Celdas.Value(2, P::colMontoAnterior).texto(), QStringLiteral("3,0000"));
        QCOMPARE(p->Celdas.Value(3, P::colPorcentaje).texto(), QStringLiteral("10,50"));
        QCOMPARE(columna(p->Celdas, P::colDecimales).mid(0, 5), (QStringList {"2", "3", "4", "0", "2"}));
        QCOMPARE(p->Celdas1.Value(3, P::usdtCompra).texto(), QStringLiteral("50,0000"));
        QCOMPARE(columna(p->Celdas1, P::usdtMarca), QStringList(9, QStringLiteral("0")));
        QVERIFY(!p->GRID1->Columns(P::usdtMarca).Visible());
    }

    void calculo_celda_por_celda()
    {
        Panel t;
        NEW_DOLAR* p = t.p;
        // A point typed in a USDT price works as the decimal mark.
        escribirEnCelda(*p->GRID1, 1, P::usdtCompra, QStringLiteral("40.0"));
        p->CALCULOS->click();
        QCOMPARE(p->Celdas1.Value(1, P::usdtCompra).texto(), QStringLiteral("40,0"));
        QCOMPARE(p->Text1->text(), QStringLiteral("123,46"));
        QCOMPARE(columna(p->Celdas, P::colMontoActual),
                 (QStringList {
                     "111,1100",  // 123,46 x 0,90 = 111,11400, cut at 2 decimals
                     "111,1140",  // at 3
                     "110,49670", // 123,46 x 0,895 = 110,49670, at 4
                     "110,49670", // decimals 0 leave the five places
                     "12,34600",  // 12,34600 cut by characters keeps three decimals
                     "",          // priced from USDT, no row points at it
                     "",          // equivalence 49 takes no part
                     "12,9333",   // 40 / 3 = 13,3333, x 0,97
                     "1,1875",    // 50 / 40 = 1,25, x 0,95
                     "0",         // divide 7
                     "0",         // price 0
                     "2",         // two rows on 54: the later, 80 / 40, wins
                 }));
        nadaGuardado(t.s.base); // a calculation stores nothing
    }

    // A zero base: divide 1 (base over price) prices its service at 0;
    // divide 2 (price over base) stops with the run-time report.
    void base_cero()
    {
        Panel t;
        NEW_DOLAR* p = t.p;
        escribirEnCelda(*p->GRID1, 1, P::usdtCompra, QStringLiteral("0"));
        escribirEnCelda(*p->GRID1, 3, P::usdtDivide, QStringLiteral("1"));
        escribirEnCelda(*p->GRID1, 7, P::usdtDivide, QStringLiteral("1"));
        p->CALCULOS->click();
        QCOMPARE(columna(p->Celdas, P::colMontoActual).mid(7, 2), (QStringList {"0", "0"}));
        QCOMPARE(p->Celdas.Value(11, P::colMontoActual).texto(), QStringLiteral("0"));
        escribirEnCelda(*p->GRID1, 3, P::usdtDivide, QStringLiteral("2"));
        QCOMPARE(numeroDeFallo([p] { p->CALCULOS->click(); }), 11L);
    }

    // The dollar emptied after the calculation is refused with a message:
    // nothing is stored, neither the services nor a dollar of 0.
    void dolar_vacio_no_se_guarda()
    {
        Panel t;
        NEW_DOLAR* p = t.p;
        p->CALCULOS->click();
        for (const char* vacio : {"", "  "}) {
            p->Text1->setText(QString::fromLatin1(vacio));
            QTest::keyClick(p->Procesar, Qt::Key_Return);
            QCOMPARE(t.s.ultimoMensaje(), QStringLiteral("Indique Dolar del día"));
            QCOMPARE(t.s.mensajes.last().estilo, 0);
            QCOMPARE(p->focusWidget(), p->Text1);
        }
        nadaGuardado(t.s.base);
        QCOMPARE(t.s.m->Dolar_Param, 120.0f);
        // A dollar typed back stores as it should.
        p->Text1->setText(QStringLiteral("130,5"));
        p->Procesar->click();
        QCOMPARE(t.s.base.valor(QStringLiteral("select Dolar from parametros")), QStringLiteral("130.5"));
        QCOMPARE(t.s.m->Dolar_Param, 130.5f);
    }

    void actualizar_sin_calculo_no_guarda()
    {
        Panel t;
        t.p->Procesar->click();
        nadaGuardado(t.s.base);
        // The second row typed by hand counts as a calculation: every row is sent,
        // the empty ones keep their amount.
        escribirEnCelda(*t.p->GRID, 1, P::colMontoActual, QStringLiteral("7.25"));
        t.p->Procesar->click();
        QCOMPARE(t.s.base.valor(
                     QStringLiteral("select group_concat(MONTO, ' ') from (select MONTO from servicios order by C_SERVIcio)")),
                 QStringLiteral("1.0 7.25 3.0 4.0 5.0 6.0 49.0 50.0 51.0 52.0 53.0 54.0"));
        QVERIFY(t.s.base.valor(QStringLiteral("select Fecha from parametros"))
                    .startsWith(QDate::currentDate().toString(Qt::ISODate)));
        QCOMPARE(t.s.m->Monto_T(2), 7.25f);
    }

    void guardar_y_verlo_en_consola_y_entrada()
    {
        SesionDePrueba s;
        const QString hoy = QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
        // An unpaid TRUMIN row of today, 100 received.
        s.base.sql(QStringLiteral("INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, operadora, "
                                  "tipo_servicio) VALUES ('%1', 900, 12, 106, 100, '1', 1)")
                       .arg(hoy));
        NEW_DOLAR* p = abrirPanel(s);
        QCOMPARE(p->Celdas.Value(0, P::colServicio).texto(), QStringLiteral("TRUMIN"));

        // A new price for PESOS COLOMBIA (USDT row 4), through the USDT grid.
        escribirEnCelda(*p->GRID1, 3, P::usdtCompra, QStringLiteral("4000"));
        QCOMPARE(p->Celdas1.Value(3, P::usdtMarca).texto(), QStringLiteral("-1"));
        p->MODIFICAR_USDT->click();
        QCOMPARE(s.base.valor(QStringLiteral("select compra || ' ' || div from servicios_usdt where C_SERVIcio = 4")),
                 QStringLiteral("4000.0 1"));
        QCOMPARE(s.m->Compra_T(55), 4150.0); // the cache waits for the next load

        QTest::keyClick(p->CALCULOS, Qt::Key_Return); // Enter works as a click on every button
        // 365,50 x 0,91 = 332,605, cut to 332,6000; the operator corrects it.
        QCOMPARE(p->Celdas.Value(0, P::colMontoActual).texto(), QStringLiteral("332,6000"));
        escribirEnCelda(*p->GRID, 0, P::colMontoActual, QStringLiteral("45.5"));
        QTest::keyClick(p->Procesar, Qt::Key_Return);
        QCOMPARE(s.base.valor(QStringLiteral("select MONTO from servicios where C_SERVIcio = 1")), QStringLiteral("45.5"));
        QCOMPARE(s.base.valor(QStringLiteral("select MONTO from servicios where C_SERVIcio = 2")), QStringLiteral("343.57"));
        QCOMPARE(p->Celdas.Value(0, P::colMontoAnterior).texto(), QStringLiteral("45,5000"));
        QCOMPARE(columna(p->Celdas, P::colMontoActual), QStringList(p->Celdas.filas(), QString()));
        QCOMPARE(s.m->Monto_T(1), 45.5f);
        QCOMPARE(s.m->Dolar_Param, 365.5f);
        QCOMPARE(s.m->Compra_T(55), 4000.0);
        QVERIFY(s.m->Fecha_Param.startsWith(QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"))));
        QCOMPARE(p->focusWidget(), p->Text1);

        // F5: the rate line and the estimate of the unpaid row use the new amount.
        auto* c = abrirPorMenu<Form2>(s, "CONSULTAR", "Form2");
        QVERIFY(c->Label1->text().startsWith(QStringLiteral(" TRU = 45,50    ZEL = 343,57")));
        c->Fecha1->setDate(QDate::currentDate());
        c->Fecha2->setDate(QDate::currentDate());
        c->SELECCIONA->click();
        int fila = -1;
        for (int i : c->Celdas.Filas())
            if (c->Celdas.Value(i, Form2::colSec).texto() == QLatin1String("0900"))
                fila = i;
        QVERIFY(fila >= 0);
        QCOMPARE(c->Celdas.Value(fila, Form2::colFactor).texto(), QStringLiteral("45,5000"));
        QCOMPARE(c->Celdas.Value(fila, Form2::colEstimado).texto(), QStringLiteral("4.550,00"));

        // F4: 40.000 pesos (letter M) arrive as dollars at the new price.
        auto* e = abrirPorMenu<Movimientos>(s, "AGREGAR", "Movimientos");
        e->Text2[Movimientos::txtLetra]->setText(QStringLiteral("M"));
        QTest::keyClick(e->Text2[Movimientos::txtLetra], Qt::Key_Return);
        e->Text2[Movimientos::txtEnviado]->setText(QStringLiteral("40000"));
        QTest::keyClick(e->Text2[Movimientos::txtEnviado], Qt::Key_Return);
        QCOMPARE(e->Text2[Movimientos::txtRecibido]->text(), QStringLiteral("10,00"));
    }

    void ingreso_usdt_y_divide()
    {
        SesionDePrueba s;
        s.base.sql(QStringLiteral("INSERT INTO servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra) "
                                  "VALUES (60, 'PESOS CHILE', 5, 4, 2, 'H')"));
        NEW_DOLAR* p = abrirPanel(s);
        auto pedir = [&](const QString& nombre, const QString& codigo) {
            p->Text2->setText(nombre);
            p->Text3->setText(codigo);
            p->INGRESO->click();
            return s.mensajes.isEmpty() ? QString() : s.mensajes.takeLast().texto;
        };
        // Each refusal with the field it leaves the focus in; 56 is tied to
        // another USDT row, refused as taken before looking at the service.
        const struct {
            const char *nombre, *codigo, *aviso;
            QLineEdit* foco;
        } rechazos[] = {
            {"", "60", "Indique la Descripcipón del Servicio", p->Text2},
            {"usdt chile", "", "Indique codigo de equivalencia", p->Text3},
            {"usdt chile", "56", " ERROR : Código de equivalencia ya esta asignado", p->Text3},
            {"usdt chile", "57", " ERROR : Codigo de servicio equivalente no existe", p->Text3},
            {"usdt chile", "4", " ERROR : No se puede asignar equivalencia a ese servicio, SW-C=1", p->Text3},
        };
        for (const auto& r : rechazos) {
            QCOMPARE(pedir(QString::fromUtf8(r.nombre), QString::fromUtf8(r.codigo)), QString::fromUtf8(r.aviso));
            QCOMPARE(p->focusWidget(), r.foco);
            QVERIFY(s.mensajes.isEmpty());
        }
        QCOMPARE(p->Text3->text(), QString()); // a refused code is emptied
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from servicios_usdt")), QStringLiteral("6"));

        // 60.9 is the code 60, stored as such with the name in capitals, quotes
        // and all: the name travels as a value.
        const QString servicios = s.base.valor(QStringLiteral("select count(*) from servicios"));
        QCOMPARE(pedir(QStringLiteral("o'higgins'); DELETE FROM servicios; --"), QStringLiteral("60.9")), QString());
        QCOMPARE(s.base.valor(QStringLiteral("select C_SERVIcio || ' ' || D_SERVIcio || ' ' || equivalencia || ' ' || div "
                                             "from servicios_usdt where equivalencia = 60")),
                 QStringLiteral("7 O'HIGGINS'); DELETE FROM SERVICIOS; -- 60 0"));
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from servicios")), servicios);
        QCOMPARE(p->Celdas1.Value(6, P::usdtDescripcion).texto(), QStringLiteral("O'HIGGINS'); DELETE FROM SERVICIOS; --"));
        QCOMPARE(p->Text2->text(), QString());

        // Divide typed on a reference row is stored as 0; a row typed back to
        // its old value is sent all the same; the reload clears every mark.
        s.base.sql(QStringLiteral("UPDATE parametros SET Fecha_Compraventas = '2020-01-01 00:00:00'"));
        escribirEnCelda(*p->GRID1, 0, P::usdtDivide, QStringLiteral("1"));
        escribirEnCelda(*p->GRID1, 2, P::usdtDescripcion, QStringLiteral("USDT BINANCE"));
        escribirEnCelda(*p->GRID1, 6, P::usdtDivide, QStringLiteral("1"));
        p->MODIFICAR_USDT->click();
        QCOMPARE(s.base.valor(
                     QStringLiteral("select group_concat(div, ' ') from (select div from servicios_usdt order by C_SERVIcio)")),
                 QStringLiteral("0 0 1 1 1 2 1"));
        QCOMPARE(p->Celdas1.Value(0, P::usdtDivide).texto(), QStringLiteral("0"));
        QCOMPARE(columna(p->Celdas1, P::usdtMarca), QStringList(7, QStringLiteral("0")));
        // No price changed: the moment of the last price update stays.
        QCOMPARE(s.base.valor(QStringLiteral("select Fecha_Compraventas from parametros")),
                 QStringLiteral("2020-01-01 00:00:00"));
        QVERIFY(s.m->Fecha_Compraventas.startsWith(QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"))));

        // An amount that is no number stops the store with the run-time report.
        escribirEnCelda(*p->GRID, 1, P::colMontoActual, QStringLiteral("1; DELETE FROM servicios"));
        QVERIFY_THROWS_EXCEPTION(FalloEjecucion, p->Procesar->click());
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from servicios")), servicios);
    }

    // A new database has no USDT row: the empty table saves without a call
    // and takes its first row; with no service either, the code is refused.
    void tabla_usdt_vacia()
    {
        SesionDePrueba s;
        s.base.sql(QStringLiteral("DELETE FROM servicios_usdt; INSERT INTO servicios (C_SERVIcio, D_SERVIcio, porcentaje, "
                                  "decimales, sw_calculos, letra) VALUES (60, 'PESOS CHILE', 5, 4, 2, 'H')"));
        NEW_DOLAR* p = abrirPanel(s);
        QCOMPARE(p->Celdas1.filas(), 0);
        p->MODIFICAR_USDT->click();
        QCOMPARE(p->Celdas1.filas(), 0);
        p->Text2->setText(QStringLiteral("usdt chile"));
        p->Text3->setText(QStringLiteral("60"));
        p->INGRESO->click();
        QVERIFY(s.mensajes.isEmpty());
        QCOMPARE(s.base.valor(QStringLiteral("select D_SERVIcio || ' ' || equivalencia from servicios_usdt")),
                 QStringLiteral("USDT CHILE 60"));
        QCOMPARE(p->Celdas1.filas(), 1);

        s.base.sql(QStringLiteral("DELETE FROM servicios_usdt; DELETE FROM servicios"));
        p->Form_Activate(); // as when the operator comes back to the panel
        p->activateWindow();
        QCOMPARE(p->Celdas.filas() + p->Celdas1.filas(), 0);
        p->Text2->setText(QStringLiteral("usdt peru"));
        p->Text3->setText(QStringLiteral("61"));
        QTest::keyClick(p->INGRESO, Qt::Key_Return);
        QCOMPARE(s.textos(), QStringList {" ERROR : Codigo de servicio equivalente no existe"});
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from servicios_usdt")), QStringLiteral("0"));
        // With no service at all there is no second row whose amount tells
        // that a calculation was run: storing is a subscript out of range.
        QCOMPARE(numeroDeFallo([p] { p->Procesar->click(); }), 9L);
    }

    void notificaciones()
    {
        SesionDePrueba s;
        NEW_DOLAR* p = abrirPanel(s);
        QVERIFY(!p->Frame1->isVisible());
        QTest::keyClick(p->Notifica, Qt::Key_Enter);
        QVERIFY(p->Frame1->isVisible());
        QCOMPARE(p->Celdas2.UpperBound(1), 3);
        QCOMPARE(p->Celdas2.UpperBound(2), int(P::notiLeida));
        // Newest first, code in two digits, the moment the business's way.
        QCOMPARE(columna(p->Celdas2, P::notiTitulo),
                 (QStringList {"SALDO BAJO", "RETRASO EN PAGOS", "CAMBIO DE CUENTA", "FERIADO"}));
        QCOMPARE(p->Celdas2.Value(0, P::notiProveedor).texto(), QStringLiteral("03"));
        QVERIFY(
            QDateTime::fromString(p->Celdas2.Value(0, P::notiFecha).texto(), QStringLiteral("dd/MM/yyyy HH:mm:ss")).isValid());

        // Each opening reads the server again.
        s.base.sql(QStringLiteral(
            "INSERT INTO notificaciones (Codigo_proveedor, Nombre, titulo, mensaje, Fecha, tipo, leida) "
            "VALUES (5, 'MULTISERVICIOS ANDES', 'NUEVA CUENTA', 'x', datetime('now', 'localtime'), 'AVISO', 'NO')"));
        QTest::keyClick(p->CIERRA_NOTI, Qt::Key_Return);
        QVERIFY(!p->Frame1->isVisible());
        p->Notifica->click();
        QCOMPARE(p->Celdas2.UpperBound(1), 4);
        QCOMPARE(p->Celdas2.Value(0, P::notiTitulo).texto(), QStringLiteral("NUEVA CUENTA"));

        // Two of one moment stand by provider, whichever was written first,
        // as the SQL Server twin orders them.
        s.base.sql(QStringLiteral("INSERT INTO notificaciones (Codigo_proveedor, Nombre, titulo, mensaje, Fecha, tipo, leida) "
                                  "VALUES (2, 'CAMBIOS EL LLANO', 'B', 'x', '2099-01-01 10:00:00', 'AVISO', 'NO'), "
                                  "(9, 'REMESAS MARACAIBO', 'A', 'x', '2099-01-01 10:00:00', 'AVISO', 'NO')"));
        p->Notifica->click();
        QCOMPARE(columna(p->Celdas2, P::notiProveedor).mid(0, 2), (QStringList {"02", "09"}));

        // None: an empty grid and no message.
        s.base.sql(QStringLiteral("DELETE FROM notificaciones"));
        p->CIERRA_NOTI->click();
        p->Notifica->click();
        QVERIFY(p->Frame1->isVisible());
        QCOMPARE(p->Celdas2.filas(), 0);
        QVERIFY(s.mensajes.isEmpty());
    }
};
REGISTRAR_PRUEBA(PruebaNewDolar);

#include "tst_new_dolar.moc"
