// Two operators on SQL Server, each console with the versions it loaded: a
// save or a delete of a row that the other changed, or deleted and entered
// again, is refused whole with the rows named, and the console reloads. The
// versions the trigger gives are never given twice. Rows of April 2031, which
// no other test touches, removed at the end.
#include "mensajes.h"
#include "mostrador.h"
#include "prueba.h"
#include "tsql.h"

namespace {

ServidorTsql& servidor() { return *ServidorTsql::instancia(); }

const QDate kDia(2031, 4, 2);

// Three unpaid rows of the day, as the entry screen leaves them.
void filasDelDia()
{
    QCOMPARE(servidor().admin(QStringLiteral(
                 "DELETE FROM dbo.MOVIMIENTOS WHERE FECHA = '20310402';"
                 "INSERT INTO dbo.MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, operadora, tipo_servicio, obs) "
                 "VALUES ('20310402', 1, 12, 10, 10, '1', 1, ''), ('20310402', 2, 13, 20, 20, '1', 1, ''), "
                 "('20310402', 3, 12, 30, 30, '2', 1, '')")),
             QString());
}

// Columns of a stored row, joined by '/'.
QString fila(const QString& columnas, int secuencia)
{
    return servidor()
        .filas(QStringLiteral("SELECT %1 FROM dbo.MOVIMIENTOS WHERE FECHA = '20310402' AND SECUENCIA = %2").arg(columnas).arg(secuencia))
        .value(0)
        .join(QLatin1Char('/'));
}

QString regalo() { return servidor().filas(QStringLiteral("SELECT regalo, ultregalo FROM dbo.proveedor WHERE C_proveedor = 3")).value(0).join(QLatin1Char('/')); }

qint64 version(int secuencia)
{
    const QList<QStringList> f = servidor().filas(
        QStringLiteral("SELECT version FROM dbo.MOVIMIENTOS_VERSION WHERE FECHA = '20310402' AND SECUENCIA = %1").arg(secuencia));
    return f.isEmpty() ? -1 : f[0].value(0).toLongLong();
}

// The one box shown: the refusal, naming the row.
void rechazo(const SesionDePrueba& s, const char* filaNombrada)
{
    QCOMPARE(s.mensajes.size(), 1);
    QVERIFY2(s.mensajes[0].texto.startsWith(QStringLiteral("Otro operador modificó o eliminó")), qPrintable(s.mensajes[0].texto));
    QVERIFY2(s.mensajes[0].texto.contains(QLatin1String(filaNombrada)), qPrintable(s.mensajes[0].texto));
    QCOMPARE(s.mensajes[0].estilo, int(Mensajes::vbExclamation));
}

} // namespace

class PruebaVersionesSqlServer : public QObject {
    Q_OBJECT
private slots:
    void cleanupTestCase() { servidor().admin(QStringLiteral("DELETE FROM dbo.MOVIMIENTOS WHERE FECHA = '20310402'")); }

    // B loads, A pays row 2; B's note on rows 1 and 2 is refused, the payment stays.
    void unaNotaNoBorraUnPago()
    {
        filasDelDia();
        SesionDePrueba a(servidor().cadenaTrumin());
        SesionDePrueba b(servidor().cadenaTrumin());
        Form2* pb = consola(b, kDia);
        Form2* pa = consola(a, kDia);
        escribirEnFila(*pa->GRID, filaDe(pa, 2), {{9, "0134"}, {11, "PAGO-A"}});
        pa->ACTUALIZAR->click();
        QCOMPARE(fila(QStringLiteral("C_BANCO, REFERENCIA"), 2), QStringLiteral("0134/PAGO-A"));
        b.mensajes.clear();
        escribirEnCelda(*pb->GRID, filaDe(pb, 2), 22, QStringLiteral("nota de B"));
        escribirEnCelda(*pb->GRID, filaDe(pb, 1), 22, QStringLiteral("otra de B"));
        pb->ACTUALIZAR->click();
        rechazo(b, "02/04/2031  0002");
        QCOMPARE(fila(QStringLiteral("C_BANCO, REFERENCIA, obs"), 2), QStringLiteral("0134/PAGO-A/"));
        QCOMPARE(fila(QStringLiteral("obs"), 1), QString());
        QCOMPARE(pb->Celdas.Value(filaDe(pb, 2), 11).texto(), QStringLiteral("PAGO-A"));
        // Reloaded, the same screen saves twice in a row.
        b.mensajes.clear();
        for (const char* nota : {"nota de B", "nota de B, segunda"}) {
            escribirEnCelda(*pb->GRID, filaDe(pb, 2), 22, QString::fromUtf8(nota));
            pb->ACTUALIZAR->click();
        }
        QCOMPARE(b.textos(), QStringList());
        QCOMPARE(fila(QStringLiteral("C_BANCO, obs"), 2), QStringLiteral("0134/nota de B, segunda"));
    }

    // B saves a note on row 1; A's payment run of rows 1 and 2 from its older
    // grid writes nothing, the provider's gift included.
    void unPagoNoBorraUnaNota()
    {
        filasDelDia();
        SesionDePrueba a(servidor().cadenaTrumin());
        SesionDePrueba b(servidor().cadenaTrumin());
        Form2* pa = consola(a, kDia);
        Form2* pb = consola(b, kDia);
        escribirEnCelda(*pb->GRID, filaDe(pb, 1), 22, QStringLiteral("llamar antes"));
        pb->ACTUALIZAR->click();
        const QString antes = regalo();
        b.mensajes.clear();
        pagar(pa, {1, 2}, QStringLiteral("LOTE-A"));
        rechazo(b, "02/04/2031  0001");
        QCOMPARE(fila(QStringLiteral("C_BANCO, C_PROVEEDOR, obs"), 1), QStringLiteral("/0/llamar antes"));
        QCOMPARE(fila(QStringLiteral("C_BANCO, REFERENCIA, fecha_pago"), 2), QStringLiteral("//"));
        QCOMPARE(regalo(), antes);
        QCOMPARE(pa->Celdas.Value(filaDe(pa, 1), 22).texto(), QStringLiteral("llamar antes"));
    }

    // A deletes row 3 and enters a new transaction under sequence 3; B's
    // save of the old row 3 leaves the new one as entered. The new row's
    // version was never given before.
    void unaFilaBorradaYVueltaAEntrarNoSePisa()
    {
        filasDelDia();
        SesionDePrueba a(servidor().cadenaTrumin());
        SesionDePrueba b(servidor().cadenaTrumin());
        Form2* pb = consola(b, kDia);
        Form2* pa = consola(a, kDia);
        const qint64 vieja = version(3);
        QVERIFY(vieja > 0);
        b.respuesta = Mensajes::vbYes;
        dobleClic(pa, 3);
        QCOMPARE(version(3), qint64(-1));
        auto* entrada = a.abrir<Movimientos>(QStringLiteral("Movimientos"));
        entrada->Fecha1->setDate(kDia);
        QCOMPARE(entrada->Text2[0]->text(), QStringLiteral("0003"));
        teclear(entrada, {{2, "13"}, {4, "77"}});
        entrada->Text2[10]->setText(QStringLiteral("nueva de A"));
        entrada->INCLUIR->click();
        const QString nueva = QStringLiteral("C_CLIENTE, enviado, obs");
        QCOMPARE(fila(nueva, 3), QStringLiteral("13/77/nueva de A"));
        QVERIFY(version(3) > vieja && version(3) > version(2));
        b.mensajes.clear();
        escribirEnCelda(*pb->GRID, filaDe(pb, 3), 22, QStringLiteral("nota vieja de B"));
        escribirEnCelda(*pb->GRID, filaDe(pb, 1), 11, QStringLiteral("REF-B"));
        pb->ACTUALIZAR->click();
        rechazo(b, "02/04/2031  0003");
        QCOMPARE(fila(nueva, 3), QStringLiteral("13/77/nueva de A"));
        QCOMPARE(fila(QStringLiteral("REFERENCIA"), 1), QString());
        QCOMPARE(pb->Celdas.Value(filaDe(pb, 3), 22).texto(), QStringLiteral("nueva de A"));
    }

    // The trigger: rows of one insert each take a version of their own, an
    // update takes a new one, a key changed moves it, a delete drops it.
    void elDisparadorDaVersionesNuevas()
    {
        filasDelDia();
        const qint64 v1 = version(1), v2 = version(2), v3 = version(3);
        QVERIFY(v1 > 0 && v2 > 0 && v3 > 0);
        QCOMPARE(QSet<qint64>({v1, v2, v3}).size(), 3);
        QCOMPARE(servidor().admin(QStringLiteral("UPDATE dbo.MOVIMIENTOS SET obs = 'x' WHERE FECHA = '20310402' AND SECUENCIA <= 2")), QString());
        QVERIFY(version(1) > v3 && version(2) > v3 && version(1) != version(2));
        QCOMPARE(servidor().admin(QStringLiteral("UPDATE dbo.MOVIMIENTOS SET SECUENCIA = 9 WHERE FECHA = '20310402' AND SECUENCIA = 3")), QString());
        QCOMPARE(version(3), qint64(-1));
        QVERIFY(version(9) > version(2));
        QCOMPARE(servidor().admin(QStringLiteral("DELETE FROM dbo.MOVIMIENTOS WHERE FECHA = '20310402'")), QString());
        QCOMPARE(servidor().filas(QStringLiteral("SELECT COUNT(*) FROM dbo.MOVIMIENTOS_VERSION WHERE FECHA = '20310402'")).value(0).value(0),
                 QStringLiteral("0"));
    }
};

REGISTRAR_PRUEBA(PruebaVersionesSqlServer);
#include "tst_versiones.moc"
