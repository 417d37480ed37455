// The session's shared state: the reference cache, the name look-ups and the
// small routines every screen leans on, against a temporary database.
#include "base_temporal.h"
#include "login.h"
#include "module1.h"
#include "fallo_esperado.h"
#include "prueba.h"

namespace {

// A catalogue laid out by hand, small enough to know every value.
void catalogoConocido(const BaseTemporal& base)
{
    base.sql(QStringLiteral(R"(
        INSERT INTO bancos (C_Banco, D_banco) VALUES (102, 'BANCO DE VENEZUELA'), (134, 'BANESCO');
        INSERT INTO clientes (C_CLIENTE, D_cliente, Revisar) VALUES (12, 'MARIA PEREZ', ''), (40, 'JOSE DIAZ', '9999');
        INSERT INTO proveedor (C_proveedor, D_proveedor, clave_pro, porgan, Comision, regalo, ultregalo)
               VALUES (3, 'PAGOS RAPIDOS', 'PR', 37.8, 2.5, 0, 0);
        INSERT INTO conceptos (C_CONCEPTO, D_CONCEPTO) VALUES (1, 'PAGO A CLIENTE'), (7, 'DEVOLUCION');
        INSERT INTO servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, St_servicio, MONTO)
               VALUES (1, 'TRUMIN', 5.4, 2, 1, 'T', 1, 330.5), (2, 'ZELLE', 4, 2, 1, 'Z', 1, 335.25),
                      (9, 'WALLY', 2.9, 2, 1, 'W', 1, 340), (55, 'USDT BINANCE', 1.5, 4, 2, 'M', 1, 1.0125);
        INSERT INTO servicios_usdt (C_SERVIcio, D_SERVIcio, compra, venta, equivalencia, div)
               VALUES (1, 'DOLAR REFERENCIA', 350, 352, 0, 0), (2, 'USDT BASE', 345.5, 347, 0, 0),
                      (3, 'USDT BINANCE', 1.02, 1.03, 55, 1);
        INSERT INTO bancos_zelle (C_Banco, D_banco) VALUES (0, 'NINGUNO'), (1, 'BANK OF AMERICA'), (10, 'CHASE');
        INSERT INTO parametros (Clave, Fecha, Fecha_Compraventas, Dolar) VALUES ('1234', '22/11/2026 08:00:00', '22/11/2026 08:05:00', 350.75);
    )"));
}

// A session open on that catalogue, its cache loaded unless asked not to.
struct Sesion {
    explicit Sesion(bool cargar = true)
    {
        catalogoConocido(base);
        m.Conexion.ConnectionString = base.cadenaConexion();
        m.Conexion.Open();
        if (cargar)
            LOGIN::Carga_Parametros(m);
    }
    BaseTemporal base;
    Module1 m;
};

} // namespace

class PruebaModule1 : public QObject {
    Q_OBJECT
private slots:
    // Each table in its place: the provider's gain share loses its fraction;
    // services go by their own code, and their count is the last code read;
    // a USDT row with an equivalence writes its rate on that service's place.
    void cargaDelCacheLlenaCadaTabla()
    {
        Sesion s;
        auto& m = s.m;
        QCOMPARE((QStringList {m.Clave, m.Bancos_T(2, 1), m.Clientes_T(2, 3), m.Proveedores_T(1, 3), m.Proveedores_T(1, 4),
                               m.Servicios_T(9)[2], m.Servicios_T(1)[5], m.Servicios_T(1)[3], m.Servicios_T(3)[2],
                               m.Bancos_Zelle_T(10)}),
                 (QStringList {"1234", "0134", "9999", "37", "2,5", "WALLY", "T", "5,4", "", "CHASE"}));
        QCOMPARE((QList<int> {m.N_Bancos, m.N_Clientes, m.N_Conceptos, m.N_Servicios}), (QList<int> {2, 2, 2, 55}));
        QCOMPARE((QList<double> {m.Compra_T(55), m.Div_T(55), m.Compra_T(3), m.Compra_T(2)}),
                 (QList<double> {1.02, 1, 0, 345.5}));
        QCOMPARE(m.Dolar_Param, 350.75f);
        QCOMPARE(m.Monto_T(2), 335.25f);
        QVERIFY(m.Rs == nullptr);
    }

    void recargaBorraComprasPeroGuardaLoDemas()
    {
        Sesion s(false);
        auto& m = s.m;
        m.Compra_T(0) = 7;
        m.Compra_T(40) = 5;
        LOGIN::Carga_Parametros(s.m);
        QCOMPARE(m.Compra_T(40), 0.0); // purchase prices are cleared before the USDT rates arrive
        QCOMPARE(m.Compra_T(0), 7.0);  // the place 0 is not touched

        s.base.sql(QStringLiteral("DELETE FROM servicios WHERE C_SERVIcio = 9; DELETE FROM bancos;"
                                  "DELETE FROM servicios_usdt WHERE C_SERVIcio = 3;"));
        m.Carga_Tablas();
        QCOMPARE(m.Servicios_T(9)[2], QStringLiteral("WALLY")); // a removed service keeps its name
        QCOMPARE(m.Compra_T(55), 0.0);
        QCOMPARE(m.N_Bancos, int16_t(0));
        QCOMPARE(m.Nombre_Banco(QStringLiteral("0134")), QStringLiteral("0134"));
    }

    // The cases one a line.
    // clang-format off
    void codigosFueraDeRangoDetienenLaCarga_data()
    {
        QTest::addColumn<QString>("fila");
        QTest::newRow("servicio 101") << "INSERT INTO servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, St_servicio, MONTO) VALUES (101, 'X', 0, 2, 1, 'X', 1, 1)";
        QTest::newRow("zelle 11") << "INSERT INTO bancos_zelle (C_Banco, D_banco) VALUES (11, 'OTRO')";
        QTest::newRow("equivalencia 101") << "INSERT INTO servicios_usdt (C_SERVIcio, D_SERVIcio, compra, venta, equivalencia, div) VALUES (4, 'X', 1, 1, 101, 1)";
    }
    // clang-format on
    void codigosFueraDeRangoDetienenLaCarga()
    {
        QFETCH(QString, fila);
        Sesion s; // the limits themselves fit
        s.base.sql(fila);
        QCOMPARE(numeroDeFallo([&] { s.m.Carga_Tablas(); }), 9L);
    }

    void nombresYConversionDeDolares()
    {
        Sesion s;
        auto& m = s.m;
        // a code not in the catalogue stands for its name
        const std::pair<QString, const char*> nombres[] = {{m.Nombre_Banco(QStringLiteral("0102")), "BANCO DE VENEZUELA"},
                                                           {m.Nombre_Banco(QStringLiteral("102")), "102"},
                                                           {m.Nombre_Banco(QStringLiteral("7777")), "7777"},
                                                           {m.Nombre_Cliente(12), "MARIA PEREZ"},
                                                           {m.Nombre_Cliente(13), "13"},
                                                           {m.Nombre_Proveedor(3), "PAGOS RAPIDOS"},
                                                           {m.Nombre_Proveedor(0), "0"},
                                                           {m.Nombre_Concepto(7), "DEVOLUCION"},
                                                           {Module1::Nombre_Dia(1), "Dom"},
                                                           {Module1::Nombre_Dia(7), "Sab"},
                                                           {Module1::Nombre_Dia(8), ""},
                                                           {Module1::Nombre_Dia(0), ""}};
        for (const auto& [nombre, esperado] : nombres)
            QCOMPARE(nombre, QLatin1String(esperado));

        m.Div_T(60) = 2; // divided by the price of service 2, whatever its own
        m.Div_T(61) = 1; // no purchase price: the amount stays
        // by the service's percentage; 55 by its own purchase price
        const struct {
            double monto;
            int servicio;
            double usd;
        } conversiones[] = {{100, 1, 94.3}, {100, 9, 96.8}, {100, 4, 100}, {102, 55, 100}, {691, 60, 2}, {50, 61, 50}};
        for (const auto& c : conversiones) {
            m.Convierte_Dolar(c.monto, c.servicio);
            QVERIFY2(qAbs(m.Monto_Usd - c.usd) < 1e-9,
                     qPrintable(QStringLiteral("servicio %1: %2").arg(c.servicio).arg(m.Monto_Usd)));
        }
        m.Compra_T(2) = 0;
        QVERIFY_THROWS_EXCEPTION(FalloEjecucion, m.Convierte_Dolar(10, 60));
        QCOMPARE(numeroDeFallo([&] { m.Convierte_Dolar(10, 101); }), 9L); // no place in the tables
    }

    void fechasYEspera()
    {
        QCOMPARE(Module1::Fecha_AMD(QStringLiteral("25/12/2024")), QStringLiteral("20241225"));
        QCOMPARE(Module1::Fecha_DMA(QStringLiteral("20241225")), QStringLiteral("25/12/2024"));
        QCOMPARE(Module1::Fecha_AMD(QStringLiteral("5/12/2024")), QStringLiteral("0242/5/")); // unguarded on purpose

        Module1 m;
        QDateTime ahora(QDate(2026, 11, 22), QTime(10, 0, 0));
        int lecturas = 0;
        m.reloj = [&] {
            ++lecturas;
            ahora = ahora.addMSecs(250);
            return ahora;
        };
        m.Espera(2);
        QVERIFY(ahora >= QDateTime(QDate(2026, 11, 22), QTime(10, 0, 2)));
        QVERIFY(lecturas >= 8);
    }
};

REGISTRAR_PRUEBA(PruebaModule1);
#include "tst_module1.moc"
