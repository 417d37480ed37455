// Two operators on one database file, each console with what it loaded: a
// save or a delete of a row that the other changed, or deleted and entered
// again, after the load is refused whole, said in a message, and the console
// shows the rows as they are now.
#include "dialogo.h"
#include "escribir.h"
#include "form2.h"
#include "form2_pago.h"
#include "mensajes.h"
#include "mesa.h"
#include "referencia.h"
#include "movimientos.h"
#include "prueba.h"

#include <QRadioButton>

namespace {

using enum Consola::Col;

// Three unpaid rows and one paid on 24/11/2026, provider 1 with its gift.
const char* const kFilas = R"(
 ('20261124', 1, 12, 10, 10, 0, 0, '', '', 0, '1', 2, 1, 100, '', 10, 10, 0, '', '', 0, 0, '0'),
 ('20261124', 2, 13, 20, 20, 0, 0, '', '', 0, '1', 2, 1, 100, '', 20, 20, 0, '', '', 0, 0, '0'),
 ('20261124', 3, 12, 30, 30, 0, 0, '', '', 0, '2', 2, 1, 100, '', 30, 30, 0, '', '', 0, 0, '0'),
 ('20261124', 4, 13, 40, 40, 1, 12000, '0134', 'R4', 300, '1', 2, 1, 5, '', 1, 1, 0, '20261124', '09:00:00', 1, 1, '0')
)";

const QDate kDia(2026, 11, 24);

// Two sessions on one file, as two operators on two machines' programs; the
// program's boxes of both are kept by the second one.
struct DosOperadores {
    SesionDePrueba a {false};
    std::unique_ptr<SesionDePrueba> b;

    DosOperadores()
    {
        a.base.sql(conReferencia(kFilas));
        LOGIN::Carga_Parametros(*a.m);
        b = std::make_unique<SesionDePrueba>(a.base.cadenaConexion());
    }
    QString bd(const QStringList& columnas, int secuencia) const
    {
        return Mesa<Form2>::bd(a.base, columnas, secuencia, QStringLiteral("20261124"));
    }
    QString regalo() const
    {
        return a.base.valor(QStringLiteral("select regalo || '/' || ultregalo from proveedor where C_proveedor = 1"));
    }
    QStringList avisos() const { return b->textos(); }
};

// A console of one operator, queried over the day.
template <class T = Form2> T* consola(SesionDePrueba& s, const char* nombre = "Form2")
{
    auto* p = s.abrir<T>(QString::fromLatin1(nombre));
    Mesa<T>::consultar(p, kDia, kDia);
    return p;
}

// The row of a transaction, and one of its cells.
template <class T> int filaDe(const T* p, int secuencia) { return Mesa<T>::filaDe(p, secuencia); }
template <class T> QString celda(const T* p, int secuencia, int col)
{
    return p->Celdas.Value(filaDe(p, secuencia), col).texto();
}

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
        escribirEnCelda(*a->GRID, filaDe(a, 2), colCodBanco, QStringLiteral("0134"));
        escribirEnCelda(*a->GRID, filaDe(a, 2), colReferencia, QStringLiteral("PAGO-A"));
        a->ACTUALIZAR->click();
        QCOMPARE(o.bd({"C_BANCO", "REFERENCIA"}, 2), QStringLiteral("0134|PAGO-A"));
        o.b->mensajes.clear();

        escribirEnCelda(*b->GRID, filaDe(b, 2), colNota, QStringLiteral("nota de B"));
        escribirEnCelda(*b->GRID, filaDe(b, 1), colNota, QStringLiteral("otra nota de B"));
        b->ACTUALIZAR->click();
        refusalNames(o.avisos(), {QStringLiteral("24/11/2026  0002")}, {QStringLiteral("0001")});
        QCOMPARE(o.b->mensajes[0].estilo, int(Mensajes::vbExclamation));
        QCOMPARE(o.bd({"C_BANCO", "REFERENCIA", "obs"}, 2), QStringLiteral("0134|PAGO-A|"));
        QCOMPARE(o.bd({"obs"}, 1), QString());
        // Reloaded: the payment shows, the typed notes are gone, nothing is left marked.
        QCOMPARE(celda(b, 2, colReferencia), QStringLiteral("PAGO-A"));
        QCOMPARE(celda(b, 2, colNota), QString());
        for (int i : b->Celdas.Filas())
            QCOMPARE(b->Celdas.Value(i, colMarca).texto(), QString());

        // Now fresh, the same screen saves, twice in a row.
        o.b->mensajes.clear();
        escribirEnCelda(*b->GRID, filaDe(b, 2), colNota, QStringLiteral("nota de B"));
        b->ACTUALIZAR->click();
        escribirEnCelda(*b->GRID, filaDe(b, 2), colNota, QStringLiteral("nota de B, segunda"));
        b->ACTUALIZAR->click();
        QCOMPARE(o.avisos(), QStringList());
        QCOMPARE(o.bd({"C_BANCO", "obs"}, 2), QStringLiteral("0134|nota de B, segunda"));
    }

    // B saves a note on row 1; A, from its older grid, pays rows 1 and 2 in
    // one run: nothing of the run is written, the provider's gift included.
    void unPagoNoBorraUnaNota()
    {
        DosOperadores o;
        Form2* a = consola(o.a);
        Form2* b = consola(*o.b);
        escribirEnCelda(*b->GRID, filaDe(b, 1), colNota, QStringLiteral("llamar antes de pagar"));
        b->ACTUALIZAR->click();
        const QString regalo = o.regalo();
        o.b->mensajes.clear();

        for (int secuencia : {1, 2})
            a->Marcar(filaDe(a, secuencia));
        Dialogo::Reemplazar([](Dialogo& d) {
            d.Text2[Dialogo::txtCodProveedor]->setText(QStringLiteral("1"));
            QTest::keyClick(d.Text2[Dialogo::txtCodProveedor], Qt::Key_Return);
            d.Text2[Dialogo::txtReferencia]->setText(QStringLiteral("LOTE-A"));
            d.Option2[Dialogo::bcoBanesco]->setChecked(true);
            d.Option3[Dialogo::opPagoMovil]->setChecked(true);
            d.OKButton->click();
        });
        a->Sumarizar->click();
        Dialogo::Reemplazar({});
        refusalNames(o.avisos(), {QStringLiteral("24/11/2026  0001")}, {QStringLiteral("0002")});
        QCOMPARE(o.bd({"C_BANCO", "C_PROVEEDOR", "obs"}, 1), QStringLiteral("|0|llamar antes de pagar"));
        QCOMPARE(o.bd({"C_BANCO", "REFERENCIA", "fecha_pago"}, 2), QStringLiteral("||"));
        QCOMPARE(o.regalo(), regalo);
        QCOMPARE(celda(a, 1, colNota), QStringLiteral("llamar antes de pagar"));
        QCOMPARE(celda(a, 2, colReferencia), QString());
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
        a->GRID->vista()->setCurrentIndex(a->GRID->modelo()->index(filaDe(a, 3), colCliente));
        emit a->GRID->DblClick();
        QCOMPARE(o.bd({"count(*)"}, 3), QStringLiteral("0"));
        auto* entrada = o.a.abrir<Movimientos>(QStringLiteral("Movimientos"));
        entrada->Fecha1->setDate(kDia);
        QCOMPARE(entrada->Text2[0]->text(), QStringLiteral("0003"));
        teclear(entrada->Text2[2], QStringLiteral("13"));
        teclear(entrada->Text2[4], QStringLiteral("77"));
        entrada->Text2[10]->setText(QStringLiteral("nueva de A"));
        entrada->INCLUIR->click();
        const QStringList nueva {"C_CLIENTE", "enviado", "obs"};
        QCOMPARE(o.bd(nueva, 3), QStringLiteral("13|77.0|nueva de A"));
        o.b->mensajes.clear();

        escribirEnCelda(*b->GRID, filaDe(b, 3), colNota, QStringLiteral("nota vieja de B"));
        escribirEnCelda(*b->GRID, filaDe(b, 1), colReferencia, QStringLiteral("REF-B"));
        b->ACTUALIZAR->click();
        refusalNames(o.avisos(), {QStringLiteral("24/11/2026  0003")}, {QStringLiteral("0001")});
        QCOMPARE(o.bd(nueva, 3), QStringLiteral("13|77.0|nueva de A"));
        QCOMPARE(o.bd({"REFERENCIA"}, 1), QString());
        QCOMPARE(celda(b, 3, colNota), QStringLiteral("nueva de A"));

        // B's grid was reloaded: the new row is B's to delete now.
        Form2* c = consola(o.a);
        escribirEnCelda(*c->GRID, filaDe(c, 3), colNota, QStringLiteral("nueva, revisada"));
        c->ACTUALIZAR->click();
        o.b->mensajes.clear();
        b->GRID->vista()->setCurrentIndex(b->GRID->modelo()->index(filaDe(b, 3), colCliente));
        emit b->GRID->DblClick();
        QCOMPARE(o.avisos().size(), 2); // the question, then the refusal
        refusalNames(o.avisos().mid(1), {QStringLiteral("24/11/2026  0003")});
        QCOMPARE(o.bd(nueva, 3), QStringLiteral("13|77.0|nueva, revisada"));
    }

    // The consoles by date and by date of payment of one operator hold
    // their own loads: a save of one does not make the other's rows current.
    void dosConsolasDeUnOperador()
    {
        DosOperadores o;
        auto* porPago = consola<Form2_Pago>(o.a, "Form2_Pago");
        QCOMPARE(filaDe(porPago, 4) >= 0, true);
        Form2* porDia = consola(o.a);
        escribirEnCelda(*porDia->GRID, filaDe(porDia, 4), colNota, QStringLiteral("por dia"));
        porDia->ACTUALIZAR->click();
        o.b->mensajes.clear();
        escribirEnCelda(*porPago->GRID, filaDe(porPago, 4), colReferencia, QStringLiteral("por pago"));
        porPago->ACTUALIZAR->click();
        refusalNames(o.avisos(), {QStringLiteral("24/11/2026  0004")});
        QCOMPARE(o.bd({"REFERENCIA", "obs"}, 4), QStringLiteral("R4|por dia"));
    }
};

REGISTRAR_PRUEBA(PruebaVersiones);
#include "tst_versiones.moc"
