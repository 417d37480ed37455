// The demo database that a first start creates: the parameters and the
// reference cache answer the way the client reads them, the two reference
// pictures are there, and three months of transactions hold together.
#include "cliente.h"
#include "prueba.h"

#include <QDate>
#include <QImage>
#include <QSet>
#include <algorithm>

namespace {

// How many rows of the demo break a rule written as a WHERE clause.
int infractores(const BaseTemporal& base, const QString& tabla, const QString& condicion)
{
    return base.valor(QStringLiteral("SELECT count(*) FROM %1 WHERE %2").arg(tabla, condicion)).toInt();
}

QString hoy(int diasAtras = 0)
{
    return QDate::currentDate().addDays(-diasAtras).toString(QStringLiteral("yyyyMMdd"));
}

} // namespace

class PruebaDemo : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { base_ = std::make_unique<BaseTemporal>(true); }

    void parametrosSiempreEnUnaFila()
    {
        Cliente s(*base_);
        auto rs = s.llamar("TRU_PARAMETROS");
        QVERIFY(!rs->Eof());
        QCOMPARE(rs->Fields("Clave").aTexto(), QStringLiteral("1234"));
        for (const char* momento : {"Fecha", "Fecha_Compraventas"}) {
            const QString texto = rs->Fields(QLatin1String(momento)).aTexto();
            const QDateTime leido = QDateTime::fromString(texto, QStringLiteral("dd/MM/yyyy HH:mm:ss"));
            QVERIFY2(leido.isValid(), qPrintable(texto));
            QVERIFY(leido <= QDateTime::currentDateTime().addSecs(1));
        }
        // the day's dollar is the reference price of the USDT table and of the dollar screen
        const double dolar = rs->Fields("Dolar").aDouble();
        QVERIFY(dolar > 300 && dolar < 400);
        QCOMPARE(base_->valor("SELECT compra FROM servicios_usdt WHERE C_SERVIcio = 1").toDouble(), dolar);
        QCOMPARE(base_->valor("SELECT valor FROM dolar").toDouble(), dolar);
        rs->MoveNext();
        QVERIFY(rs->Eof());

        // an empty table still answers one row without nulls
        BaseTemporal vacia;
        Cliente v(vacia);
        rs = v.llamar("TRU_PARAMETROS");
        QVERIFY(!rs->Eof());
        QCOMPARE(rs->Fields("Clave").aTexto(), QString());
        QCOMPARE(rs->Fields("Fecha").aTexto(), QString());
        QCOMPARE(rs->Fields("Dolar").aDouble(), 0.0);
    }

    void cacheEnNueveConjuntos()
    {
        Cliente s(*base_);
        auto rs = s.llamar("TRU_CARGA_TABLAS_03");
        // the columns that the cache load reads, set by set; set 5 is stepped over
        const QList<QStringList> columnas = {
            {"C_Banco", "D_banco"},
            {"C_CLIENTE", "D_cliente", "Revisar"},
            {"C_proveedor", "D_proveedor", "porgan", "Comision"},
            {"C_CONCEPTO", "D_CONCEPTO"},
            {},
            {"C_SERVIcio", "D_SERVIcio", "porcentaje", "decimales", "letra"},
            {"C_SERVIcio", "MONTO"},
            {"equivalencia", "C_SERVIcio", "compra", "div"},
            {"C_Banco", "D_banco"},
        };
        QList<int> filas;
        QList<int> servicios, zelle;
        QSet<QString> letras;
        for (int conjunto = 0; conjunto < columnas.size(); ++conjunto) {
            if (conjunto > 0)
                QVERIFY2(rs->NextRecordset(), qPrintable(QStringLiteral("set %1 missing").arg(conjunto + 1)));
            int n = 0;
            for (; !rs->Eof(); rs->MoveNext(), ++n) {
                for (const QString& c : columnas[conjunto])
                    QVERIFY2(!rs->Fields(c).esNulo(), qPrintable(QStringLiteral("set %1, %2").arg(conjunto + 1).arg(c)));
                if (conjunto == 5) {
                    servicios << int(rs->Fields("C_SERVIcio").aDouble());
                    const QString letra = rs->Fields("letra").aTexto();
                    QVERIFY2(letra.size() == 1 && letra[0].isUpper() && !letras.contains(letra), qPrintable(letra));
                    letras << letra;
                }
                if (conjunto == 6)
                    QVERIFY(rs->Fields("MONTO").aDouble() > 0);
                if (conjunto == 7) {
                    QVERIFY(rs->Fields("C_SERVIcio").aDouble() <= 100);
                    QVERIFY(rs->Fields("equivalencia").aDouble() <= 100);
                }
                if (conjunto == 8)
                    zelle << int(rs->Fields("C_Banco").aDouble());
            }
            filas << n;
        }
        QVERIFY(!rs->NextRecordset());

        QVERIFY(filas[0] >= 15);
        QVERIFY(filas[1] >= 3000);
        QVERIFY(filas[2] >= 10 && filas[3] >= 8);
        QCOMPARE(filas[6], filas[5]);
        QVERIFY(filas[7] >= 3);
        // services by rising code within the client's table, the entry's wallets in place
        QVERIFY(std::is_sorted(servicios.begin(), servicios.end()));
        QCOMPARE(QSet<int>(servicios.begin(), servicios.end()).size(), servicios.size());
        QVERIFY(servicios.last() <= 100);
        QVERIFY(servicios.contains(9) && servicios.contains(50));
        QCOMPARE(base_->valor("SELECT group_concat(letra, '') FROM (SELECT letra FROM servicios WHERE C_SERVIcio <= 4 ORDER BY C_SERVIcio)"),
                 QStringLiteral("TZIA"));
        QCOMPARE(zelle, (QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    }

    // Rules every row of the demo keeps, each as the rows that would break it.
    void reglas_data()
    {
        QTest::addColumn<QString>("tabla");
        QTest::addColumn<QString>("infraccion");
        const QString m = QStringLiteral("MOVIMIENTOS m");
        const QString pagada = QStringLiteral("C_BANCO NOT IN ('', '7777')");
        const auto regla = [](const char* nombre, const QString& tabla, const QString& infraccion) {
            QTest::newRow(nombre) << tabla << infraccion;
        };
        // services priced from the dollar: its price less their percentage, cut to two decimals
        regla("tarifa del dolar", "servicios", "sw_calculos = 1 AND NOT (MONTO BETWEEN (SELECT Dolar FROM parametros) * "
                                               "(100 - porcentaje) / 100 - 0.01 AND (SELECT Dolar FROM parametros) * (100 - porcentaje) / 100)");
        // services priced from USDT: each has exactly one USDT row that points at it
        regla("tarifa usdt", "servicios s", "sw_calculos = 2 AND (C_SERVIcio < 50 OR (SELECT count(*) FROM servicios_usdt u "
                                            "WHERE u.equivalencia = s.C_SERVIcio AND u.div IN (1, 2)) <> 1)");
        regla("precios base", "servicios_usdt", "C_SERVIcio <= 2 AND (equivalencia <> 0 OR div <> 0 OR compra <= 0)");
        regla("forma de calculo", "servicios", "sw_calculos NOT IN (1, 2)");
        regla("revisar", "clientes", "Revisar NOT IN ('', '9999')");
        // every row names a client and a service that exist; paid rows a provider and a bank
        regla("cliente", m, "NOT EXISTS (SELECT 1 FROM clientes c WHERE c.C_CLIENTE = m.C_CLIENTE)");
        regla("servicio", m, "NOT EXISTS (SELECT 1 FROM servicios s WHERE s.C_SERVIcio = m.tipo_servicio)");
        regla("pagada", m, pagada + " AND (NOT EXISTS (SELECT 1 FROM proveedor p WHERE p.C_proveedor = m.C_PROVEEDOR) OR NOT "
                                    "EXISTS (SELECT 1 FROM bancos k WHERE k.C_Banco = CAST(m.C_BANCO AS INTEGER)) OR "
                                    "length(C_BANCO) <> 4 OR REFERENCIA = '')");
        // unpaid rows as the entry screen leaves them
        regla("sin pagar", m, "C_BANCO = '' AND NOT (pago = 0 AND confirmacion = 0 AND ganancia = 100 AND g1 = recibido AND "
                              "g2 = recibido AND g3 = 0 AND fecha_pago = '' AND hora_pago = '' AND C_PROVEEDOR = 0)");
        // paid rows: the estimate at the rate paid, a gain that matches it, paid on or after the day
        regla("pago", m, pagada + " AND tipo_servicio < 50 AND abs(pago - CAST(confirmacion * CASE WHEN tipo_servicio IN (1, 9) "
                                  "THEN recibido ELSE enviado END AS INTEGER)) > 0.001");
        regla("pago usdt", m, pagada + " AND tipo_servicio >= 50 AND abs(pago - enviado * confirmacion) > 0.01");
        regla("ganancia", m, pagada + " AND (ganancia <= 0 OR ganancia >= 20 OR abs(g1 - recibido * (ganancia + 0.005) / 100) > "
                                      "0.006 OR abs(g2 + g3 - g1) > 0.011 OR (tipo_servicio < 50 AND g3 <> 0))");
        regla("dia del pago", m, pagada + QStringLiteral(" AND (fecha_pago < FECHA OR fecha_pago > '%1' OR length(hora_pago) <> 8"
                                                         " OR dolar1 <= 0 OR dolar2 <= 0)").arg(hoy()));
        // returned rows keep no gain
        regla("devuelta", m, "C_BANCO = '7777' AND (pago <> 0 OR ganancia <> 0 OR g1 <> 0 OR g2 <> 0 OR g3 <> 0)");
        // what arrives after the service's cut
        regla("recibido 1", m, "tipo_servicio = 1 AND abs(recibido - (enviado * 0.946 - 0.3)) > 0.006");
        regla("recibido 9", m, "tipo_servicio = 9 AND abs(recibido - (enviado * 0.971 - 0.3)) > 0.006");
        regla("recibido", m, "tipo_servicio NOT IN (1, 9) AND tipo_servicio < 50 AND recibido <> enviado");
        regla("montos", m, "enviado <= 0 OR recibido <= 0");
        // the fixed shape of the columns
        regla("forma", m, "operadora NOT IN ('1', '2') OR length(bancozelle) <> 1 OR tipo_operacion NOT IN (1, 2, 3) OR length(FECHA) <> 8");
        // sequences run 1..n without gaps on every date, 20 to 60 a day before today
        regla("secuencias", "(SELECT count(*) AS n, min(SECUENCIA) AS primera, max(SECUENCIA) AS ultima FROM MOVIMIENTOS GROUP BY FECHA)",
              "primera <> 1 OR ultima <> n");
        regla("por dia", "(SELECT count(*) AS n FROM MOVIMIENTOS WHERE FECHA < '" + hoy() + "' GROUP BY FECHA)", "n < 20 OR n > 60");
    }
    void reglas()
    {
        QFETCH(QString, tabla);
        QFETCH(QString, infraccion);
        QCOMPARE(infractores(*base_, tabla, infraccion), 0);
    }

    void fotosDeReferencia()
    {
        Cliente s(*base_);
        for (const char* sql : {"select  * from fotos where cliente = 0", "select  * from fotos where cliente = 9999"}) {
            Recordset rs = s.abrir(QString::fromLatin1(sql));
            QCOMPARE(rs.RecordCount(), 1L);
            const QImage imagen = QImage::fromData(rs.Fields("img").aBytes());
            QVERIFY2(!imagen.isNull(), sql);
            QVERIFY(imagen.height() > imagen.width()); // a portrait, like the clients' photos
        }
        QVERIFY(infractores(*base_, "clientes", "Revisar = '9999'") > 0);
    }

    // Three months up to today, every day with work, old days mostly paid,
    // some rows returned, some unpaid; the USDT base price above the dollar.
    void movimientosDeTresMeses()
    {
        const BaseTemporal& b = *base_;
        const QString m = QStringLiteral("MOVIMIENTOS m"), pagada = QStringLiteral(" AND C_BANCO NOT IN ('', '7777')");
        QCOMPARE(b.valor("SELECT max(FECHA) FROM MOVIMIENTOS"), hoy());
        const QString primera = b.valor("SELECT min(FECHA) FROM MOVIMIENTOS");
        QVERIFY2(primera >= hoy(95) && primera <= hoy(85), qPrintable(primera));
        QCOMPARE(b.valor(QStringLiteral("SELECT count(DISTINCT FECHA) FROM MOVIMIENTOS WHERE FECHA >= '%1'").arg(primera)).toInt(),
                 int(QDate::fromString(primera, QStringLiteral("yyyyMMdd")).daysTo(QDate::currentDate())) + 1);
        const int viejas = infractores(b, m, "FECHA < '" + hoy(3) + "'");
        QVERIFY(infractores(b, m, "FECHA < '" + hoy(3) + "'" + pagada) > viejas * 9 / 10);
        QVERIFY(infractores(b, m, "FECHA = '" + hoy() + "'" + pagada) * 2 <= infractores(b, m, "FECHA = '" + hoy() + "'"));
        QVERIFY(infractores(b, m, "C_BANCO = '7777'") > 0 && infractores(b, m, "C_BANCO = ''") > 0);
        QVERIFY(b.valor("SELECT compra FROM servicios_usdt WHERE C_SERVIcio = 2").toDouble()
                > b.valor("SELECT compra FROM servicios_usdt WHERE C_SERVIcio = 1").toDouble());
    }

private:
    std::unique_ptr<BaseTemporal> base_;
};

REGISTRAR_PRUEBA(PruebaDemo);

#include "tst_demo.moc"
