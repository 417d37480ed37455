// Two operators on SQL Server, each console with the versions it loaded: a
// save or a delete of a row that the other changed, or deleted and entered
// again, is refused whole with the rows named, and the console reloads. The
// versions the trigger gives are never given twice. Rows of April 2031, which
// no other test touches, removed at the end.
#include "dialogo.h"
#include "escribir.h"
#include "form2.h"
#include "mensajes.h"
#include "movimientos.h"
#include "prueba.h"
#include "sesion.h"
#include "tsql.h"

#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace {

ServidorTsql& servidor() { return *ServidorTsql::instancia(); }

const QDate kDia(2031, 4, 2);

// Columns of a stored row, joined by '/'.
QString fila(const QString& columnas, int secuencia)
{
    return servidor()
        .filas(QStringLiteral("SELECT %1 FROM dbo.MOVIMIENTOS WHERE FECHA = '20310402' AND SECUENCIA = %2")
                   .arg(columnas)
                   .arg(secuencia))
        .value(0)
        .join(QLatin1Char('/'));
}

qint64 version(int secuencia)
{
    const QList<QStringList> f = servidor().filas(
        QStringLiteral("SELECT version FROM dbo.MOVIMIENTOS_VERSION WHERE FECHA = '20310402' AND SECUENCIA = %1").arg(secuencia));
    return f.isEmpty() ? -1 : f[0].value(0).toLongLong();
}

// The row of a console that holds a sequence; -1 when none does.
int filaDe(const Consola* p, int secuencia)
{
    for (int i : p->Celdas.Filas())
        if (p->Celdas.Value(i, Form2::colSec).texto().toInt() == secuencia)
            return i;
    return -1;
}

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

// Those rows, and two operators, A and B, each with the console by date of
// transaction open on the day, both loaded before either changes anything.
// B's session, the later one, answers and keeps every box.
struct DosOperadores {
    DosOperadores()
    {
        filasDelDia();
        for (auto [s, p] : {std::pair {&a, &pa}, std::pair {&b, &pb}}) {
            *p = s->abrir<Form2>(QStringLiteral("Form2"));
            (*p)->Fecha1->setDate(kDia);
            (*p)->Fecha2->setDate(kDia);
            (*p)->SELECCIONA->click();
        }
    }
    // B's one box: the refusal, naming the row.
    void rechazo(const char* filaNombrada) const
    {
        QCOMPARE(b.mensajes.size(), 1);
        QVERIFY2(b.mensajes[0].texto.startsWith(QStringLiteral("Otro operador modificó o eliminó")),
                 qPrintable(b.mensajes[0].texto));
        QVERIFY2(b.mensajes[0].texto.contains(QLatin1String(filaNombrada)), qPrintable(b.mensajes[0].texto));
        QCOMPARE(b.mensajes[0].estilo, int(Mensajes::vbExclamation));
    }
    SesionDePrueba a {servidor().cadenaTrumin()}, b {servidor().cadenaTrumin()};
    Form2 *pa = nullptr, *pb = nullptr;
};

} // namespace

class PruebaVersionesSqlServer : public QObject {
    Q_OBJECT
private slots:
    void cleanupTestCase() { servidor().admin(QStringLiteral("DELETE FROM dbo.MOVIMIENTOS WHERE FECHA = '20310402'")); }

    // A pays row 2; B's note on rows 1 and 2 is refused, the payment stays.
    void unaNotaNoBorraUnPago()
    {
        DosOperadores o;
        escribirEnFila(*o.pa->GRID, filaDe(o.pa, 2), {{9, "0134"}, {11, "PAGO-A"}});
        o.pa->ACTUALIZAR->click();
        QCOMPARE(fila(QStringLiteral("C_BANCO, REFERENCIA"), 2), QStringLiteral("0134/PAGO-A"));
        o.b.mensajes.clear();
        escribirEnCelda(*o.pb->GRID, filaDe(o.pb, 2), 22, QStringLiteral("nota de B"));
        escribirEnCelda(*o.pb->GRID, filaDe(o.pb, 1), 22, QStringLiteral("otra de B"));
        o.pb->ACTUALIZAR->click();
        o.rechazo("02/04/2031  0002");
        QCOMPARE(fila(QStringLiteral("C_BANCO, REFERENCIA, obs"), 2), QStringLiteral("0134/PAGO-A/"));
        QCOMPARE(fila(QStringLiteral("obs"), 1), QString());
        QCOMPARE(o.pb->Celdas.Value(filaDe(o.pb, 2), 11).texto(), QStringLiteral("PAGO-A"));
        // Reloaded, the same screen saves twice in a row.
        o.b.mensajes.clear();
        for (const char* nota : {"nota de B", "nota de B, segunda"}) {
            escribirEnCelda(*o.pb->GRID, filaDe(o.pb, 2), 22, QString::fromUtf8(nota));
            o.pb->ACTUALIZAR->click();
        }
        QCOMPARE(o.b.textos(), QStringList());
        QCOMPARE(fila(QStringLiteral("C_BANCO, obs"), 2), QStringLiteral("0134/nota de B, segunda"));
    }

    // B saves a note on row 1; A's payment run of rows 1 and 2 (provider 3
    // through the payment dialog) from its older grid writes nothing, the
    // provider's gift included.
    void unPagoNoBorraUnaNota()
    {
        DosOperadores o;
        escribirEnCelda(*o.pb->GRID, filaDe(o.pb, 1), 22, QStringLiteral("llamar antes"));
        o.pb->ACTUALIZAR->click();
        const QString regalo = QStringLiteral("SELECT regalo, ultregalo FROM dbo.proveedor WHERE C_proveedor = 3");
        const QList<QStringList> antes = servidor().filas(regalo);
        o.b.mensajes.clear();
        for (int secuencia : {1, 2})
            o.pa->Marcar(filaDe(o.pa, secuencia));
        Dialogo::Reemplazar([](Dialogo& d) {
            d.Text2[1]->setText(QStringLiteral("3"));
            QTest::keyClick(d.Text2[1], Qt::Key_Return);
            d.Text2[2]->setText(QStringLiteral("LOTE-A"));
            d.Option2[1]->setChecked(true);
            d.Option3[0]->setChecked(true);
            d.OKButton->click();
        });
        o.pa->Sumarizar->click();
        Dialogo::Reemplazar({});
        o.rechazo("02/04/2031  0001");
        QCOMPARE(fila(QStringLiteral("C_BANCO, C_PROVEEDOR, obs"), 1), QStringLiteral("/0/llamar antes"));
        QCOMPARE(fila(QStringLiteral("C_BANCO, REFERENCIA, fecha_pago"), 2), QStringLiteral("//"));
        QCOMPARE(servidor().filas(regalo), antes);
        QCOMPARE(o.pa->Celdas.Value(filaDe(o.pa, 1), 22).texto(), QStringLiteral("llamar antes"));
    }

    // A deletes row 3 by a double click and enters a new transaction under
    // sequence 3; B's save of the old row 3 leaves the new one as entered.
    // The new row's version was never given before.
    void unaFilaBorradaYVueltaAEntrarNoSePisa()
    {
        DosOperadores o;
        const qint64 vieja = version(3);
        QVERIFY(vieja > 0);
        o.b.respuesta = Mensajes::vbYes;
        o.pa->GRID->vista()->setCurrentIndex(o.pa->GRID->modelo()->index(filaDe(o.pa, 3), 3));
        emit o.pa->GRID->DblClick();
        QCOMPARE(version(3), qint64(-1));
        auto* entrada = o.a.abrir<Movimientos>(QStringLiteral("Movimientos"));
        entrada->Fecha1->setDate(kDia);
        QCOMPARE(entrada->Text2[0]->text(), QStringLiteral("0003"));
        for (const auto& [campo, texto] : {std::pair {2, "13"}, std::pair {4, "77"}}) {
            entrada->Text2[campo]->setFocus();
            entrada->Text2[campo]->selectAll();
            QTest::keyClicks(entrada->Text2[campo], QLatin1String(texto));
            QTest::keyClick(entrada->Text2[campo], Qt::Key_Return);
        }
        entrada->Text2[10]->setText(QStringLiteral("nueva de A"));
        entrada->INCLUIR->click();
        const QString nueva = QStringLiteral("C_CLIENTE, enviado, obs");
        QCOMPARE(fila(nueva, 3), QStringLiteral("13/77/nueva de A"));
        QVERIFY(version(3) > vieja && version(3) > version(2));
        o.b.mensajes.clear();
        escribirEnCelda(*o.pb->GRID, filaDe(o.pb, 3), 22, QStringLiteral("nota vieja de B"));
        escribirEnCelda(*o.pb->GRID, filaDe(o.pb, 1), 11, QStringLiteral("REF-B"));
        o.pb->ACTUALIZAR->click();
        o.rechazo("02/04/2031  0003");
        QCOMPARE(fila(nueva, 3), QStringLiteral("13/77/nueva de A"));
        QCOMPARE(fila(QStringLiteral("REFERENCIA"), 1), QString());
        QCOMPARE(o.pb->Celdas.Value(filaDe(o.pb, 3), 22).texto(), QStringLiteral("nueva de A"));
    }

    // The trigger: rows of one insert each take a version of their own, an
    // update takes a new one, a key changed moves it, a delete drops it.
    void elDisparadorDaVersionesNuevas()
    {
        filasDelDia();
        const qint64 v1 = version(1), v2 = version(2), v3 = version(3);
        QVERIFY(v1 > 0 && v2 > 0 && v3 > 0);
        QCOMPARE(QSet<qint64>({v1, v2, v3}).size(), 3);
        QCOMPARE(
            servidor().admin(QStringLiteral("UPDATE dbo.MOVIMIENTOS SET obs = 'x' WHERE FECHA = '20310402' AND SECUENCIA <= 2")),
            QString());
        QVERIFY(version(1) > v3 && version(2) > v3 && version(1) != version(2));
        QCOMPARE(servidor().admin(
                     QStringLiteral("UPDATE dbo.MOVIMIENTOS SET SECUENCIA = 9 WHERE FECHA = '20310402' AND SECUENCIA = 3")),
                 QString());
        QCOMPARE(version(3), qint64(-1));
        QVERIFY(version(9) > version(2));
        QCOMPARE(servidor().admin(QStringLiteral("DELETE FROM dbo.MOVIMIENTOS WHERE FECHA = '20310402'")), QString());
        QCOMPARE(servidor()
                     .filas(QStringLiteral("SELECT COUNT(*) FROM dbo.MOVIMIENTOS_VERSION WHERE FECHA = '20310402'"))
                     .value(0)
                     .value(0),
                 QStringLiteral("0"));
    }
};

REGISTRAR_PRUEBA(PruebaVersionesSqlServer);
#include "tst_versiones.moc"
