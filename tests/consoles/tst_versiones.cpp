// Two operators on one database file, each console with what it loaded: a
// save or a delete of a row that the other changed, or deleted and entered
// again, after the load is refused whole, said in a message, and the console
// shows the rows as they are now.
#include "dialogo.h"
#include "embebido.h"
#include "escribir.h"
#include "form2.h"
#include "form2_pago.h"
#include "login.h"
#include "mensajes.h"
#include "movimientos.h"
#include "prueba.h"
#include "revision.h"
#include "sesion.h"

#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>

namespace {

// Three unpaid rows and one paid on 24/11/2026, provider 1 with its gift.
const char* const kFilas = R"(
INSERT INTO bancos VALUES (134, 'BANESCO');
INSERT INTO clientes VALUES (12, 'JOSÉ PEÑA', ''), (13, 'MARIA DIAZ', '');
INSERT INTO proveedor (C_proveedor, D_proveedor, porgan, Comision, regalo, ultregalo) VALUES (1, 'ORINOCO', 40, 1.0, 10, 0);
INSERT INTO servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, MONTO)
    VALUES (1, 'TRUMIN', 9, 2, 1, 'T', 364);
INSERT INTO servicios_usdt (C_SERVIcio, D_SERVIcio, compra, venta, equivalencia, div)
    VALUES (1, 'DOLAR', 400, 0, 0, 0), (2, 'BASE', 410, 0, 0, 0);
INSERT INTO parametros VALUES ('1234', '', '', 40);
INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, pago, C_BANCO, REFERENCIA,
                         confirmacion, operadora, tipo_operacion, tipo_servicio, ganancia, obs, g1, g2, g3,
                         fecha_pago, hora_pago, dolar1, dolar2, bancozelle) VALUES
 ('20261124', 1, 12, 10, 10, 0, 0, '', '', 0, '1', 2, 1, 100, '', 10, 10, 0, '', '', 0, 0, '0'),
 ('20261124', 2, 13, 20, 20, 0, 0, '', '', 0, '1', 2, 1, 100, '', 20, 20, 0, '', '', 0, 0, '0'),
 ('20261124', 3, 12, 30, 30, 0, 0, '', '', 0, '2', 2, 1, 100, '', 30, 30, 0, '', '', 0, 0, '0'),
 ('20261124', 4, 13, 40, 40, 1, 12000, '0134', 'R4', 300, '1', 2, 1, 5, '', 1, 1, 0, '20261124', '09:00:00', 1, 1, '0');
)";

const QDate kDia(2026, 11, 24);

// Two sessions on one file, as two operators on two machines' programs; the
// program's boxes of both are kept by the second one.
struct DosOperadores {
    SesionDePrueba a{false};
    std::unique_ptr<SesionDePrueba> b;

    DosOperadores()
    {
        a.base.sql(QString::fromUtf8(kFilas));
        LOGIN::Carga_Parametros(*a.m);
        b = std::make_unique<SesionDePrueba>(a.base.cadenaConexion());
    }
    QString bd(const QString& columnas, int secuencia) const
    {
        return a.base.valor(QStringLiteral("select %1 from MOVIMIENTOS where FECHA='20261124' and SECUENCIA=%2")
                                .arg(columnas)
                                .arg(secuencia));
    }
    QString regalo() const { return a.base.valor(QStringLiteral("select regalo || '/' || ultregalo from proveedor")); }
    QStringList avisos() const { return b->textos(); }
};

template <class T = Form2>
T* consola(SesionDePrueba& s, const char* nombre = "Form2")
{
    auto* p = s.abrir<T>(QString::fromLatin1(nombre));
    p->Fecha1->setDate(kDia);
    p->Fecha2->setDate(kDia);
    p->SELECCIONA->click();
    return p;
}

int filaDe(const Consola* p, int secuencia)
{
    for (int i : p->Celdas.Filas())
        if (p->Celdas.Value(i, 1).texto().toInt() == secuencia)
            return i;
    return -1;
}

QString celda(const Consola* p, int secuencia, int col) { return p->Celdas.Value(filaDe(p, secuencia), col).texto(); }

// The refusal names the rows, and only them.
void refusalNames(const QStringList& avisos, const QStringList& filas, const QStringList& otras = {})
{
    QCOMPARE(avisos.size(), 1);
    QVERIFY2(avisos[0].startsWith(QStringLiteral("Otro operador modificó o eliminó")), qPrintable(avisos[0]));
    QVERIFY(avisos[0].endsWith(QStringLiteral("No se grabó ningún cambio. Se vuelven a cargar los datos actuales.")));
    for (const QString& f : filas)
        QVERIFY2(avisos[0].contains(f), qPrintable(avisos[0]));
    for (const QString& f : otras)
        QVERIFY2(!avisos[0].contains(f), qPrintable(avisos[0]));
}

void teclear(QLineEdit* campo, const QString& texto)
{
    campo->setFocus();
    campo->selectAll();
    QTest::keyClicks(campo, texto);
    QTest::keyClick(campo, Qt::Key_Return);
}

} // namespace

class PruebaVersiones : public QObject {
    Q_OBJECT
private slots:
    // B loads, A pays row 2, B saves a note on row 2 and on row 1 from its
    // older grid: the payment stays, neither note is written, B sees the payment.
    void unaNotaNoBorraUnPago()
    {
        DosOperadores o;
        Form2* b = consola(*o.b);
        Form2* a = consola(o.a);
        escribirEnCelda(*a->GRID, filaDe(a, 2), 9, QStringLiteral("0134"));
        escribirEnCelda(*a->GRID, filaDe(a, 2), 11, QStringLiteral("PAGO-A"));
        a->ACTUALIZAR->click();
        QCOMPARE(o.bd(QStringLiteral("C_BANCO || '/' || REFERENCIA"), 2), QStringLiteral("0134/PAGO-A"));
        o.b->mensajes.clear();

        escribirEnCelda(*b->GRID, filaDe(b, 2), 22, QStringLiteral("nota de B"));
        escribirEnCelda(*b->GRID, filaDe(b, 1), 22, QStringLiteral("otra nota de B"));
        b->ACTUALIZAR->click();
        refusalNames(o.avisos(), {QStringLiteral("24/11/2026  0002")}, {QStringLiteral("0001")});
        QCOMPARE(o.b->mensajes[0].estilo, int(Mensajes::vbExclamation));
        QCOMPARE(o.bd(QStringLiteral("C_BANCO || '/' || REFERENCIA || '/' || obs"), 2), QStringLiteral("0134/PAGO-A/"));
        QCOMPARE(o.bd(QStringLiteral("obs"), 1), QString());
        // Reloaded: the payment shows, the typed notes are gone, nothing is left marked.
        QCOMPARE(celda(b, 2, 11), QStringLiteral("PAGO-A"));
        QCOMPARE(celda(b, 2, 22), QString());
        for (int i : b->Celdas.Filas())
            QCOMPARE(b->Celdas.Value(i, 12).texto(), QString());

        // Now fresh, the same screen saves, twice in a row.
        o.b->mensajes.clear();
        escribirEnCelda(*b->GRID, filaDe(b, 2), 22, QStringLiteral("nota de B"));
        b->ACTUALIZAR->click();
        escribirEnCelda(*b->GRID, filaDe(b, 2), 22, QStringLiteral("nota de B, segunda"));
        b->ACTUALIZAR->click();
        QCOMPARE(o.avisos(), QStringList());
        QCOMPARE(o.bd(QStringLiteral("C_BANCO || '/' || obs"), 2), QStringLiteral("0134/nota de B, segunda"));
    }

    // B saves a note on row 1; A, from its older grid, pays rows 1 and 2 in
    // one run: nothing of the run is written, the provider's gift included.
    void unPagoNoBorraUnaNota()
    {
        DosOperadores o;
        Form2* a = consola(o.a);
        Form2* b = consola(*o.b);
        escribirEnCelda(*b->GRID, filaDe(b, 1), 22, QStringLiteral("llamar antes de pagar"));
        b->ACTUALIZAR->click();
        const QString regalo = o.regalo();
        o.b->mensajes.clear();

        for (int secuencia : {1, 2})
            a->Marcar(filaDe(a, secuencia));
        Dialogo::Reemplazar([](Dialogo& d) {
            d.Text2[1]->setText(QStringLiteral("1"));
            QTest::keyClick(d.Text2[1], Qt::Key_Return);
            d.Text2[2]->setText(QStringLiteral("LOTE-A"));
            d.Option2[1]->setChecked(true);
            d.Option3[0]->setChecked(true);
            d.OKButton->click();
        });
        a->Sumarizar->click();
        Dialogo::Reemplazar({});
        refusalNames(o.avisos(), {QStringLiteral("24/11/2026  0001")}, {QStringLiteral("0002")});
        QCOMPARE(o.bd(QStringLiteral("C_BANCO || '/' || C_PROVEEDOR || '/' || obs"), 1), QStringLiteral("/0/llamar antes de pagar"));
        QCOMPARE(o.bd(QStringLiteral("C_BANCO || '/' || REFERENCIA || '/' || fecha_pago"), 2), QStringLiteral("//"));
        QCOMPARE(o.regalo(), regalo);
        QCOMPARE(celda(a, 1, 22), QStringLiteral("llamar antes de pagar"));
        QCOMPARE(celda(a, 2, 11), QString());
    }

    // A deletes row 3 and enters a new transaction, which takes sequence 3
    // again; B's save of the old row 3 from its older grid, and its delete of
    // it, leave the new transaction as it was entered.
    void unaFilaBorradaYVueltaAEntrarNoSePisa()
    {
        DosOperadores o;
        o.a.base.sql(QStringLiteral("DELETE FROM MOVIMIENTOS WHERE SECUENCIA = 4")); // 3 is the day's last
        Form2* b = consola(*o.b);
        Form2* a = consola(o.a);
        o.b->respuesta = Mensajes::vbYes;
        a->GRID->vista()->setCurrentIndex(a->GRID->modelo()->index(filaDe(a, 3), 3));
        emit a->GRID->DblClick();
        QCOMPARE(o.bd(QStringLiteral("count(*)"), 3), QStringLiteral("0"));
        auto* entrada = o.a.abrir<Movimientos>(QStringLiteral("Movimientos"));
        entrada->Fecha1->setDate(kDia);
        QCOMPARE(entrada->Text2[0]->text(), QStringLiteral("0003"));
        teclear(entrada->Text2[2], QStringLiteral("13"));
        teclear(entrada->Text2[4], QStringLiteral("77"));
        entrada->Text2[10]->setText(QStringLiteral("nueva de A"));
        entrada->INCLUIR->click();
        const QString nueva = QStringLiteral("C_CLIENTE || '/' || enviado || '/' || obs");
        QCOMPARE(o.bd(nueva, 3), QStringLiteral("13/77.0/nueva de A"));
        o.b->mensajes.clear();

        escribirEnCelda(*b->GRID, filaDe(b, 3), 22, QStringLiteral("nota vieja de B"));
        escribirEnCelda(*b->GRID, filaDe(b, 1), 11, QStringLiteral("REF-B"));
        b->ACTUALIZAR->click();
        refusalNames(o.avisos(), {QStringLiteral("24/11/2026  0003")}, {QStringLiteral("0001")});
        QCOMPARE(o.bd(nueva, 3), QStringLiteral("13/77.0/nueva de A"));
        QCOMPARE(o.bd(QStringLiteral("REFERENCIA"), 1), QString());
        QCOMPARE(celda(b, 3, 22), QStringLiteral("nueva de A"));

        // B's grid was reloaded: the new row is B's to delete now.
        Form2* c = consola(o.a);
        escribirEnCelda(*c->GRID, filaDe(c, 3), 22, QStringLiteral("nueva, revisada"));
        c->ACTUALIZAR->click();
        o.b->mensajes.clear();
        b->GRID->vista()->setCurrentIndex(b->GRID->modelo()->index(filaDe(b, 3), 3));
        emit b->GRID->DblClick();
        QCOMPARE(o.avisos().size(), 2); // the question, then the refusal
        refusalNames(o.avisos().mid(1), {QStringLiteral("24/11/2026  0003")});
        QCOMPARE(o.bd(nueva, 3), QStringLiteral("13/77.0/nueva, revisada"));
    }

    // The consoles by date and by date of payment of one operator hold
    // their own loads: a save of one does not make the other's rows current.
    void dosConsolasDeUnOperador()
    {
        DosOperadores o;
        auto* porPago = consola<Form2_Pago>(o.a, "Form2_Pago");
        QCOMPARE(filaDe(porPago, 4) >= 0, true);
        Form2* porDia = consola(o.a);
        escribirEnCelda(*porDia->GRID, filaDe(porDia, 4), 22, QStringLiteral("por dia"));
        porDia->ACTUALIZAR->click();
        o.b->mensajes.clear();
        escribirEnCelda(*porPago->GRID, filaDe(porPago, 4), 11, QStringLiteral("por pago"));
        porPago->ACTUALIZAR->click();
        refusalNames(o.avisos(), {QStringLiteral("24/11/2026  0004")});
        QCOMPARE(o.bd(QStringLiteral("REFERENCIA || '/' || obs"), 4), QStringLiteral("R4/por dia"));
    }

    // A version is never given twice: a row entered again under a deleted
    // row's key, or a row moved to another key, carries a new one. A file
    // made before the versions existed gets them when it is opened, its rows
    // kept, each loaded as version 0.
    void lasVersionesNoSeRepiten()
    {
        BaseTemporal base(false);
        const auto version = [&](int secuencia) {
            return base.valor(QStringLiteral("select coalesce((select version from MOVIMIENTOS_VERSION"
                                             " where FECHA='20261124' and SECUENCIA=%1), -1)").arg(secuencia)).toLongLong();
        };
        base.sql(QString::fromUtf8(kFilas));
        const qint64 antes = version(3);
        QVERIFY(antes > 0);
        base.sql(QStringLiteral("DELETE FROM MOVIMIENTOS WHERE SECUENCIA = 3"));
        QCOMPARE(version(3), qint64(-1));
        base.sql(QStringLiteral("INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA) VALUES ('20261124', 3)"));
        const qint64 nueva = version(3);
        QVERIFY(nueva > version(4) && nueva > antes);
        base.sql(QStringLiteral("UPDATE MOVIMIENTOS SET SECUENCIA = 9 WHERE SECUENCIA = 3"));
        QCOMPARE(version(3), qint64(-1));
        QVERIFY(version(9) > nueva);

        base.sql(QStringLiteral("DROP TRIGGER movimientos_version_alta; DROP TRIGGER movimientos_version_cambio;"
                                "DROP TRIGGER movimientos_version_baja; DROP TABLE MOVIMIENTOS_VERSION;"
                                "DROP TABLE MOVIMIENTOS_CONTADOR; PRAGMA user_version = 0;"));
        Revision::Actualizar(base.archivo()); // as the start-up does with a file made before the versions
        ServidorEmbebido servidor(base.archivo());
        servidor.abrir();
        const Resultados r = servidor.procedimiento(QStringLiteral("TRU_CONSULTA_1127"),
                                                    {Valor(QStringLiteral("20261124")), Valor(QStringLiteral("20261124"))});
        QCOMPARE(r.front().filas.size(), size_t(4));
        QCOMPARE(r.front().columnas.last(), QStringLiteral("version_fila"));
        for (const auto& fila : r.front().filas)
            QCOMPARE(fila.back().aTexto(), QStringLiteral("0"));
        base.sql(QStringLiteral("UPDATE MOVIMIENTOS SET C_CLIENTE = 13 WHERE SECUENCIA = 1"));
        QCOMPARE(version(1), qint64(1));
    }
};

REGISTRAR_PRUEBA(PruebaVersiones);
#include "tst_versiones.moc"
