// The demo database that a first start creates: the parameters answer the
// way the client reads them, the two reference pictures are there, and the
// catalogues and three months of transactions keep the rules of the business
// and of the client's cache.
#include "cliente.h"
#include "prueba.h"

#include <QDate>
#include <QImage>

namespace {

QString hoy(int diasAtras = 0) { return QDate::currentDate().addDays(-diasAtras).toString(QStringLiteral("yyyyMMdd")); }

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
            QVERIFY2(leido.isValid() && leido <= QDateTime::currentDateTime().addSecs(1), qPrintable(texto));
        }
        const double dolar = rs->Fields("Dolar").aDouble();
        QVERIFY(dolar > 300 && dolar < 400);
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
        // the day's dollar is the reference price of the USDT table and of the dollar screen
        regla("dolar del dia", "parametros",
              "Clave <> '1234' OR Dolar <> (SELECT compra FROM servicios_usdt WHERE C_SERVIcio = 1) "
              "OR Dolar <> (SELECT valor FROM dolar) OR (SELECT count(*) FROM parametros) <> 1");
        // services priced from the dollar: its price less their percentage, cut to two decimals
        regla("tarifa del dolar", "servicios",
              "sw_calculos = 1 AND NOT (MONTO BETWEEN (SELECT Dolar FROM parametros) * "
              "(100 - porcentaje) / 100 - 0.01 AND (SELECT Dolar FROM parametros) * (100 - porcentaje) / 100)");
        // services priced from USDT: each has exactly one USDT row that points at it
        regla("tarifa usdt", "servicios s",
              "sw_calculos = 2 AND (C_SERVIcio < 50 OR (SELECT count(*) FROM servicios_usdt u "
              "WHERE u.equivalencia = s.C_SERVIcio AND u.div IN (1, 2)) <> 1)");
        regla("precios base", "servicios_usdt",
              "C_SERVIcio <= 2 AND (equivalencia <> 0 OR div <> 0 OR compra <= 0 OR "
              "(C_SERVIcio = 2 AND compra <= (SELECT compra FROM servicios_usdt WHERE C_SERVIcio = 1)))");
        regla("forma de calculo", "servicios", "sw_calculos NOT IN (1, 2)");
        regla("revisar", "clientes", "Revisar NOT IN ('', '9999')");
        // the cache: codes 0 to 100 (Zelle banks 0 to 10), a rate for every
        // service, one capital letter per service typed on the entry screen,
        // the entry's wallets and the pictures in their places, enough of each catalogue
        regla("codigos", "servicios", "C_SERVIcio > 100 OR MONTO <= 0");
        regla("codigos usdt", "servicios_usdt", "C_SERVIcio > 100 OR equivalencia > 100");
        regla("letras", "servicios s",
              "letra NOT GLOB '[A-Z]' OR (SELECT count(*) FROM servicios t WHERE t.letra = s.letra) > 1");
        regla("bancos zelle", "(SELECT count(*) AS n, min(C_Banco) AS a, max(C_Banco) AS b FROM bancos_zelle)",
              "n <> 11 OR a <> 0 OR b <> 10");
        regla("billeteras",
              "(SELECT group_concat(letra, '') AS l FROM (SELECT letra FROM servicios WHERE C_SERVIcio <= 4 "
              "ORDER BY C_SERVIcio))",
              "l <> 'TZIA' OR (SELECT count(*) FROM servicios WHERE C_SERVIcio IN (9, 50)) <> 2");
        regla("fotos", "(SELECT count(*) AS n FROM fotos WHERE cliente IN (0, 9999))",
              "n <> 2 OR NOT EXISTS (SELECT 1 FROM clientes WHERE Revisar = '9999')");
        regla("catalogos",
              "(SELECT (SELECT count(*) FROM bancos) AS b, (SELECT count(*) FROM clientes) AS c, (SELECT count(*) "
              "FROM proveedor) AS p, (SELECT count(*) FROM conceptos) AS k, (SELECT count(*) FROM servicios_usdt) AS u)",
              "b < 15 OR c < 3000 OR p < 10 OR k < 8 OR u < 3");
        // every row names a client and a service that exist; paid rows a provider and a bank
        regla("cliente", m, "NOT EXISTS (SELECT 1 FROM clientes c WHERE c.C_CLIENTE = m.C_CLIENTE)");
        regla("servicio", m, "NOT EXISTS (SELECT 1 FROM servicios s WHERE s.C_SERVIcio = m.tipo_servicio)");
        regla("pagada", m,
              pagada + " AND (NOT EXISTS (SELECT 1 FROM proveedor p WHERE p.C_proveedor = m.C_PROVEEDOR) OR NOT "
                       "EXISTS (SELECT 1 FROM bancos k WHERE k.C_Banco = CAST(m.C_BANCO AS INTEGER)) OR "
                       "length(C_BANCO) <> 4 OR REFERENCIA = '')");
        // unpaid rows as the entry screen leaves them
        regla("sin pagar", m,
              "C_BANCO = '' AND NOT (pago = 0 AND confirmacion = 0 AND ganancia = 100 AND g1 = recibido AND "
              "g2 = recibido AND g3 = 0 AND fecha_pago = '' AND hora_pago = '' AND C_PROVEEDOR = 0)");
        // paid rows: the estimate at the rate paid, a gain that matches it, paid on or after the day
        regla("pago", m,
              pagada + " AND tipo_servicio < 50 AND abs(pago - CAST(confirmacion * CASE WHEN tipo_servicio IN (1, 9) "
                       "THEN recibido ELSE enviado END AS INTEGER)) > 0.001");
        regla("pago usdt", m, pagada + " AND tipo_servicio >= 50 AND abs(pago - enviado * confirmacion) > 0.01");
        regla("ganancia", m,
              pagada + " AND (ganancia <= 0 OR ganancia >= 20 OR abs(g1 - recibido * (ganancia + 0.005) / 100) > "
                       "0.006 OR abs(g2 + g3 - g1) > 0.011 OR (tipo_servicio < 50 AND g3 <> 0))");
        regla("dia del pago", m,
              pagada + QStringLiteral(" AND (fecha_pago < FECHA OR fecha_pago > '%1' OR length(hora_pago) <> 8"
                                      " OR dolar1 <= 0 OR dolar2 <= 0)")
                           .arg(hoy()));
        // returned rows keep no gain
        regla("devuelta", m, "C_BANCO = '7777' AND (pago <> 0 OR ganancia <> 0 OR g1 <> 0 OR g2 <> 0 OR g3 <> 0)");
        // what arrives after the service's cut
        regla("recibido 1", m, "tipo_servicio = 1 AND abs(recibido - (enviado * 0.946 - 0.3)) > 0.006");
        regla("recibido 9", m, "tipo_servicio = 9 AND abs(recibido - (enviado * 0.971 - 0.3)) > 0.006");
        regla("recibido", m, "tipo_servicio NOT IN (1, 9) AND tipo_servicio < 50 AND recibido <> enviado");
        regla("montos", m, "enviado <= 0 OR recibido <= 0");
        // the fixed shape of the columns
        regla("forma", m,
              "operadora NOT IN ('1', '2') OR length(bancozelle) <> 1 OR tipo_operacion NOT IN (1, 2, 3) OR length(FECHA) <> 8");
        // three months up to today, every day with work, 20 to 60 rows a day
        // before today, sequences 1..n without gaps on every date
        regla(
            "tres meses", "(SELECT min(FECHA) AS f, max(FECHA) AS u, count(DISTINCT FECHA) AS d FROM MOVIMIENTOS)",
            QStringLiteral("f < '%1' OR f > '%2' OR u <> '%3' OR d <> 1 + julianday('%4') - julianday(substr(f, 1, 4) || '-' || "
                           "substr(f, 5, 2) || '-' || substr(f, 7, 2))")
                .arg(hoy(95), hoy(85), hoy(), QDate::currentDate().toString(Qt::ISODate)));
        regla("por dia", "(SELECT count(*) AS n FROM MOVIMIENTOS WHERE FECHA < '" + hoy() + "' GROUP BY FECHA)",
              "n < 20 OR n > 60");
        regla("secuencias",
              "(SELECT count(*) AS n, min(SECUENCIA) AS primera, max(SECUENCIA) AS ultima FROM MOVIMIENTOS GROUP BY FECHA)",
              "primera <> 1 OR ultima <> n");
        // old days mostly paid, today at most half; some rows returned, some unpaid
        regla("pagadas",
              QStringLiteral("(SELECT sum(FECHA < '%1') AS viejas, sum(FECHA < '%1' AND %3) AS pagadasViejas, "
                             "sum(FECHA = '%2') AS deHoy, sum(FECHA = '%2' AND %3) AS pagadasHoy, "
                             "sum(C_BANCO = '7777') AS devueltas, sum(C_BANCO = '') AS sinPagar FROM MOVIMIENTOS)")
                  .arg(hoy(3), hoy(), pagada),
              "pagadasViejas <= viejas * 9 / 10 OR pagadasHoy * 2 > deHoy OR devueltas = 0 OR sinPagar = 0");
    }
    void reglas()
    {
        QFETCH(QString, tabla);
        QFETCH(QString, infraccion);
        QCOMPARE(base_->valor(QStringLiteral("SELECT count(*) FROM %1 WHERE %2").arg(tabla, infraccion)), QStringLiteral("0"));
    }

    // The two reference pictures read as the screens read them: portraits,
    // like the clients' photos.
    void fotosDeReferencia()
    {
        Cliente s(*base_);
        for (const char* sql : {"select  * from fotos where cliente = 0", "select  * from fotos where cliente = 9999"}) {
            const QImage imagen = QImage::fromData(s.abrir(QString::fromLatin1(sql)).Fields("img").aBytes());
            QVERIFY2(!imagen.isNull() && imagen.height() > imagen.width(), sql);
        }
    }

private:
    std::unique_ptr<BaseTemporal> base_;
};

REGISTRAR_PRUEBA(PruebaDemo);

#include "tst_demo.moc"
