// The three console queries on crafted rows: which rows each filter lets
// through, in which order, under which column names.
#include "cliente.h"
#include "prueba.h"

namespace {

class PruebaConsultas : public QObject {
    Q_OBJECT

    BaseTemporal base_;
    Cliente cliente_ {base_};

    // A query with its seven values, as the consoles send them.
    std::unique_ptr<Recordset> consulta(const char* procedimiento, const QString& desde, const QString& hasta, int pago = 0,
                                        int operadora = 0, const QString& texto1 = {}, const QString& texto2 = {},
                                        int servicio = 0)
    {
        cliente_.comando.CommandText = QString::fromLatin1(procedimiento);
        const Valor valores[] = {Valor(desde),  Valor(hasta),  Valor(pago),    Valor(operadora),
                                 Valor(texto1), Valor(texto2), Valor(servicio)};
        for (int i = 0; i < 7; ++i)
            cliente_.comando.Parameters(i + 1) = valores[i];
        return cliente_.comando.Execute();
    }

    // The rows of a query as "fecha/secuencia" keys, in the order they came.
    QStringList filas(const char* procedimiento, const QString& desde, const QString& hasta, int pago = 0, int operadora = 0,
                      const QString& texto1 = {}, const QString& texto2 = {}, int servicio = 0)
    {
        auto rs = consulta(procedimiento, desde, hasta, pago, operadora, texto1, texto2, servicio);
        QStringList r;
        for (; !rs->Eof(); rs->MoveNext())
            r << rs->Fields("Fecha").aTexto() + QLatin1Char('/') + rs->Fields("secuenciA").aTexto();
        return r;
    }

private slots:
    void initTestCase()
    {
        base_.sql(R"(
            INSERT INTO clientes (C_CLIENTE, D_cliente) VALUES (1, 'PEDRO RAMIREZ'), (2, 'ANA LUGO');
            INSERT INTO servicios (C_SERVIcio, D_SERVIcio, sw_calculos) VALUES (1, 'TRUMIN', 1), (5, 'ZELLE', 2),
                                                                               (55, 'USDT', 1);
            INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, tipo_servicio, operadora, C_BANCO, REFERENCIA, obs,
                                     fecha_pago, hora_pago) VALUES
              ('20230115', 1, 1, 1, '1', '0134', 'REF-778', '', '20240301', '10:00:00'),
              ('20240301', 2, 2, 5, '2', '', '', 'paga manana', '', ''),
              ('20240301', 1, 9, 55, '1', '7777', '', '', '20240302', '09:00:00'),
              ('20240302', 1, 1, 5, '2', '0102', 'x', '', '20240301', '08:00:00'),
              ('20221231', 1, 2, 1, '1', '', '', '', '', '');
        )");
    }

    void porFechaDeLaTransaccion()
    {
        // Rows by date, then sequence; "202301" reaches everything since January 2023.
        QCOMPARE(filas("TRU_CONSULTA_1127", "202301", "20241231"),
                 QStringList({"20230115/1", "20240301/1", "20240301/2", "20240302/1"}));
        QCOMPARE(filas("TRU_CONSULTA_1127", "20240301", "20240301"), QStringList({"20240301/1", "20240301/2"}));
        // Paid: a bank in the row, a returned one too; not paid: no bank.
        QCOMPARE(filas("TRU_CONSULTA_1127", "202301", "20241231", 1).size(), 3);
        QCOMPARE(filas("TRU_CONSULTA_1127", "202301", "20241231", 2), QStringList({"20240301/2"}));
        QCOMPARE(filas("TRU_CONSULTA_1127", "202301", "20241231", 0, 2), QStringList({"20240301/2", "20240302/1"}));
        // Texts: the client's name in any case, the reference, the note; both texts must be found.
        QCOMPARE(filas("TRU_CONSULTA_1127", "202301", "20241231", 0, 0, "ramir"), QStringList({"20230115/1", "20240302/1"}));
        QCOMPARE(filas("TRU_CONSULTA_1127", "202301", "20241231", 0, 0, "778"), QStringList({"20230115/1"}));
        // Accents and tildes are ignored as capitals are.
        QCOMPARE(filas("TRU_CONSULTA_1127", "202301", "20241231", 0, 0, "MAÑANA"), QStringList({"20240301/2"}));
        QCOMPARE(filas("TRU_CONSULTA_1127", "202301", "20241231", 0, 0, "MANANA"), QStringList({"20240301/2"}));
        QCOMPARE(filas("TRU_CONSULTA_1127", "202301", "20241231", 0, 0, "pedro", "x"), QStringList({"20240302/1"}));
        // Services: one code, or 98 and 99 for the services of each way of pricing.
        QCOMPARE(filas("TRU_CONSULTA_1127", "202301", "20241231", 0, 0, {}, {}, 5), QStringList({"20240301/2", "20240302/1"}));
        QCOMPARE(filas("TRU_CONSULTA_1127", "202301", "20241231", 0, 0, {}, {}, 98), QStringList({"20230115/1", "20240301/1"}));
        QCOMPARE(filas("TRU_CONSULTA_1127", "202301", "20241231", 0, 0, {}, {}, 99), QStringList({"20240301/2", "20240302/1"}));

        // The columns the console reads, the name joined and empty for an unknown client.
        auto rs = consulta("TRU_CONSULTA_1127", "20240301", "20240301");
        QCOMPARE(rs->Fields("Cliente").aTexto(), QString());
        QCOMPARE(rs->Fields("C_Banco").aTexto(), QString("7777"));
        for (const char* c :
             {"Enviado", "recibido", "C_proveedor", "bancozelle", "tipo_servicio", "confirmacion", "Pago", "referencia",
              "operadora", "tipo_operacion", "OBS", "Ganancia", "G1", "G2", "G3", "fecha_pago", "hora_pago", "dolar1", "dolar2"})
            rs->Fields(QString::fromLatin1(c));
        rs->MoveNext();
        QCOMPARE(rs->Fields("Cliente").aTexto(), QString("ANA LUGO"));
    }

    void porFechaDePagoYUsdt()
    {
        // By the day of payment, then its hour; unpaid rows never come.
        QCOMPARE(filas("TRU_CONSULTA_PAGO_250320", "20240301", "20240302"),
                 QStringList({"20240302/1", "20230115/1", "20240301/1"}));
        QCOMPARE(filas("TRU_CONSULTA_PAGO_250320", "202301", "20241231", 0, 1, "pedro"), QStringList({"20230115/1"}));
        // USDT: services from 50 up only, under the same filters.
        QCOMPARE(filas("TRU_CONSULTA_USDT", "202301", "20241231"), QStringList({"20240301/1"}));
        QCOMPARE(filas("TRU_CONSULTA_USDT", "202301", "20241231", 2), QStringList());
    }
};

} // namespace

REGISTRAR_PRUEBA(PruebaConsultas);
#include "tst_consultas.moc"
