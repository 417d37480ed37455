// A console's save of a row that another session holds locked: the backend
// waits for it no longer than its statement time limit (60 s), fails with the
// server's refusal, and leaves the connection ready for the next save. It
// runs as a test of its own beside the others (a minute of waiting).
#include "fallo.h"
#include "prueba.h"
#include "tsql.h"

#include <QElapsedTimer>

#include <chrono>
#include <cstdio>
#include <future>

namespace {

// A day of its own, far from the demo's rows and from the other tests'.
const QString kDia = QStringLiteral("20320101");

ServidorTsql& servidor() { return *ServidorTsql::instancia(); }

// How the console's save ended: its failure's number (0: none) and text, after how long.
struct Espera {
    long numero = 0;
    QString texto;
    double segundos = 0;
};

} // namespace

class PruebaBloqueo : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        QCOMPARE(
            servidor().admin(
                QStringLiteral("DELETE FROM dbo.MOVIMIENTOS WHERE FECHA = '%1';"
                               "INSERT INTO dbo.MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, obs) VALUES ('%1', 1, 12, 'antes')")
                    .arg(kDia)),
            QString());
    }

    void cleanup()
    {
        servidor().admin(QStringLiteral("IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION"));
        servidor().admin(QStringLiteral("DELETE FROM dbo.MOVIMIENTOS WHERE FECHA = '%1'").arg(kDia));
    }

    void unaFilaRetenidaAcabaEnElLimiteDeTiempo()
    {
        ServidorTsql& s = servidor();
        // The administrator changes the row and keeps the transaction open.
        QCOMPARE(s.admin(QStringLiteral("BEGIN TRANSACTION; UPDATE dbo.MOVIMIENTOS SET obs = 'retenida' "
                                        "WHERE FECHA = '%1' AND SECUENCIA = 1")
                             .arg(kDia)),
                 QString());
        QCOMPARE(s.filas(QStringLiteral("SELECT @@TRANCOUNT")), QList<QStringList> {{QStringLiteral("1")}});

        // The console's connection is made and used on a thread of its own, so
        // that a save that never ends shows here as a failure, not as a test
        // that hangs; the connection closes when the thread ends.
        std::future<Espera> consola = std::async(std::launch::async, [&s] {
            Espera r;
            std::unique_ptr<Servidor> trumin = s.sqlServer();
            QElapsedTimer reloj;
            reloj.start();
            try {
                trumin->ejecutar(
                    QStringLiteral(
                        " UPDATE MOVIMIENTOS SET  recibido =  '9.5', enviado =  '10', C_CLIENTE =  '0012', obs =  'de la consola',"
                        " C_PROVEEDOR =  '0000', pago =  '0', C_BANCO =  '', operadora =  '1', REFERENCIA =  '',"
                        " confirmacion =  '0', tipo_operacion =  '2', ganancia =  '100', g1 =  '9.5', g2 =  '9.5',"
                        " g3 =  '0', bancozelle =  'B', tipo_servicio =  '1' WHERE FECHA=  '%1' and SECUENCIA = '0001'")
                        .arg(kDia));
            } catch (const FalloEjecucion& f) {
                r.numero = f.numero();
                r.texto = f.texto();
            }
            r.segundos = double(reloj.elapsed()) / 1000;
            return r;
        });
        const bool termino = consola.wait_for(std::chrono::seconds(240)) == std::future_status::ready;
        // The lock goes in any case: a save still waiting then ends at once.
        QCOMPARE(s.admin(QStringLiteral("ROLLBACK TRANSACTION")), QString());
        QVERIFY2(termino, "the save still waited for the lock after 240 s");
        const Espera r = consola.get();
        std::printf("Guardado ante una fila retenida: %.1f s de espera, luego \"%s\"\n", r.segundos, qPrintable(r.texto));
        QCOMPARE(r.numero, FalloEjecucion::servidor({}).numero());
        QVERIFY2(r.segundos >= 50, qPrintable(QString::number(r.segundos)));

        // The save that the counter was told had failed is not written later,
        // when the lock goes: the administrator's own change of the row waits
        // for whatever the console's session still held, and then finds the
        // row as it was before both.
        QCOMPARE(s.admin(QStringLiteral("SET LOCK_TIMEOUT 30000; UPDATE dbo.MOVIMIENTOS SET obs = obs "
                                        "WHERE FECHA = '%1' AND SECUENCIA = 1")
                             .arg(kDia)),
                 QString());
        QCOMPARE(s.filas(QStringLiteral("SELECT obs FROM dbo.MOVIMIENTOS WHERE FECHA = '%1' AND SECUENCIA = 1").arg(kDia)),
                 QList<QStringList> {{QStringLiteral("antes")}});
    }
};

REGISTRAR_PRUEBA(PruebaBloqueo);
#include "tst_bloqueo.moc"
