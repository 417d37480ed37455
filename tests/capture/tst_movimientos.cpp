// The entry screen: a transaction typed at the counter, from the keyboard to
// its row in MOVIMIENTOS, with the client look-ups and photos beside it.
#include "fallo.h"
#include "foto.h"
#include "imagenes.h"
#include "login.h"
#include "mensajes.h"
#include "movimientos.h"
#include "prueba.h"
#include "rejilla.h"
#include "sesion.h"

#include <QClipboard>
#include <QComboBox>
#include <QApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace {

// Types a text into a field and presses Enter, as the operator does.
void teclear(QLineEdit* campo, const QString& texto)
{
    campo->setFocus();
    campo->selectAll();
    QTest::keyClicks(campo, texto);
    QTest::keyClick(campo, Qt::Key_Return);
}

QStringList filaGuardada(const BaseTemporal& base, const QString& fecha, int secuencia)
{
    QStringList r;
    for (const char* c : {"FECHA", "SECUENCIA", "C_CLIENTE", "enviado", "recibido", "C_PROVEEDOR", "pago", "C_BANCO",
                          "REFERENCIA", "confirmacion", "operadora", "tipo_operacion", "tipo_servicio", "ganancia", "obs",
                          "g1", "g2", "g3", "fecha_pago", "hora_pago", "dolar1", "dolar2", "bancozelle"})
        r << base.valor(QStringLiteral("select %1 from MOVIMIENTOS where FECHA='%2' and SECUENCIA=%3")
                            .arg(QLatin1String(c), fecha)
                            .arg(secuencia));
    return r;
}

} // namespace

class PruebaMovimientos : public QObject {
    Q_OBJECT
private slots:
    void del_teclado_al_registro()
    {
        SesionDePrueba s;
        s.m->Dolar_Actual = 36.5f;
        auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
        QCOMPARE(p->windowTitle(), QStringLiteral("Ingreso de transacciones"));
        const QString hoy = QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
        const int siguiente = s.base.valor(QStringLiteral("select coalesce(max(SECUENCIA),0)+1 from MOVIMIENTOS where FECHA='%1'").arg(hoy)).toInt();
        QCOMPARE(p->Text2[0]->text(), QString::asprintf("%04d", siguiente));
        QCOMPARE(p->Text2[7]->text(), QStringLiteral("Ramil"));
        QCOMPARE(p->Text2[11]->text(), QStringLiteral("T"));

        // Operator 1 by Enter: the name gets its trailing blank; 3 leaves it.
        teclear(p->Text2[1], QStringLiteral("1"));
        QCOMPARE(p->Text2[7]->text(), QStringLiteral("Ramil "));
        QCOMPARE(p->focusWidget(), p->Text2[2]);
        teclear(p->Text2[1], QStringLiteral("2"));
        QCOMPARE(p->Text2[7]->text(), QStringLiteral("Noelina"));
        teclear(p->Text2[1], QStringLiteral("3"));
        QCOMPARE(p->Text2[7]->text(), QStringLiteral("Noelina"));
        teclear(p->Text2[1], QStringLiteral("1"));

        // Codes and amounts take only digits and decimal marks; the note takes anything.
        teclear(p->Text2[2], QStringLiteral("1a2 "));
        QCOMPARE(p->Text2[2]->text(), QStringLiteral("0012"));
        QCOMPARE(p->Text2[8]->text(), s.m->Nombre_Cliente(12));
        QCOMPARE(p->focusWidget(), p->Text2[11]);
        teclear(p->Text2[11], QStringLiteral("t"));
        QCOMPARE(p->focusWidget(), p->Text2[4]);
        teclear(p->Text2[4], QStringLiteral("1x00"));
        QCOMPARE(p->Text2[5]->text(), QStringLiteral("94,30"));
        QCOMPARE(p->Text2[6]->text(), QString());                 // Enter on the sent amount leaves the estimate
        teclear(p->Text2[5], QStringLiteral(""));
        QCOMPARE(p->Text2[6]->text(), QStringLiteral("3.441")); // 94,30 x 36,5 cut to whole bolivars
        QCOMPARE(p->focusWidget(), p->Text2[10]);
        // A note of 600 characters: the field takes what the column holds.
        QString nota;
        for (int i = 0; nota.size() < 600; ++i)
            nota += QStringLiteral("pago urgente %1; ").arg(i);
        teclear(p->Text2[10], nota);
        QCOMPARE(p->Text2[10]->text(), nota.left(500));
        p->Combo2->setCurrentIndex(3);
        p->INCLUIR->click();

        QCOMPARE(filaGuardada(s.base, hoy, siguiente),
                 (QStringList{hoy, QString::number(siguiente), "12", "100.0", "94.3", "0", "0.0", "", "", "0.0", "1", "2",
                              "1", "100.0", nota.left(500), "94.3", "94.3", "0.0", "", "", "0.0", "0.0", "3"}));

        // Ready for the next one of the same day.
        QCOMPARE(p->Text2[0]->text(), QString::asprintf("%04d", siguiente + 1));
        QCOMPARE(p->Text2[2]->text(), QString());
        QCOMPARE(p->Text2[11]->text(), QStringLiteral("T"));
        QCOMPARE(p->Text2[12]->text(), QStringLiteral("TRUMIN"));
        QCOMPARE(p->Combo2->currentIndex(), 0);
        QCOMPARE(p->List2->count(), 0);
        QCOMPARE(p->Fecha1->date(), QDate::currentDate());

        // Coming back to the screen keeps what is typed; another date numbers anew.
        p->Text2[10]->setText(QStringLiteral("a medias"));
        p->Form_Activate();
        QCOMPARE(p->Text2[10]->text(), QStringLiteral("a medias"));
        p->Fecha1->setDate(QDate(2001, 1, 1));
        QCOMPARE(p->Text2[0]->text(), QStringLiteral("0001"));
        QCOMPARE(p->Text2[10]->text(), QString());
    }

    void letras_y_montos()
    {
        SesionDePrueba s;
        // Pesos at 1000 a dollar: 10129 pesos are 10,129 dollars.
        s.base.sql(QStringLiteral("update servicios_usdt set compra = 1000 where equivalencia = 55"));
        s.m->Carga_Tablas();
        auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));

        p->Text2[11]->setText(QStringLiteral("m"));
        QCOMPARE(p->Text2[11]->text(), QStringLiteral("M"));
        QCOMPARE(p->Text2[12]->text(), QStringLiteral("PESOS COLOMBIA"));
        QCOMPARE(p->Cod_Servicio, int16_t(55));
        teclear(p->Text2[4], QStringLiteral("10129"));
        QCOMPARE(p->Text2[5]->text(), QStringLiteral("10,12")); // cut, not rounded to 10,13

        // The list, walked with the arrow keys, writes the letter and the name,
        // and the letter picks the service.
        p->List1->setCurrentRow(0);
        p->List1->setFocus();
        QTest::keyClick(p->List1, Qt::Key_Down);
        QCOMPARE(p->Text2[11]->text(), QStringLiteral("Z"));
        QCOMPARE(p->Cod_Servicio, int16_t(2));
        QTest::keyClick(p->List1, Qt::Key_Down);
        QTest::keyClick(p->List1, Qt::Key_Down);
        const QListWidgetItem* elegido = p->List1->item(3);
        QCOMPARE(p->List1->currentItem(), elegido);
        QCOMPARE(p->Text2[11]->text(), elegido->text().mid(1, 1));
        QCOMPARE(p->Text2[12]->text(), elegido->text().mid(5, 20));
        QCOMPARE(int(p->Cod_Servicio), elegido->data(Qt::UserRole).toInt());

        // A letter no service has blocks the save.
        const QString antes = s.base.valor(QStringLiteral("select count(*) from MOVIMIENTOS"));
        p->Text2[11]->setText(QStringLiteral("q"));
        QCOMPARE(p->Text2[12]->text(), QStringLiteral("LETRA NO ASIGNADA"));
        p->Text2[2]->setText(QStringLiteral("0012"));
        p->Text2[4]->setText(QStringLiteral("5"));
        p->Text2[5]->setText(QStringLiteral("5"));
        p->INCLUIR->click();
        QCOMPARE(s.ultimoMensaje(), QStringLiteral("Letra del Servicio no esta asignada"));
        QCOMPARE(s.mensajes.last().estilo, int(Mensajes::vbCritical));
        QCOMPARE(p->focusWidget(), p->Text2[11]);
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from MOVIMIENTOS")), antes);
    }

    void avisos_en_su_orden()
    {
        SesionDePrueba s;
        auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
        for (int i : {2, 4, 5})
            teclear(p->Text2[i], QString());
        p->INCLUIR->click();
        p->Text2[2]->setText(QStringLiteral("7"));
        p->INCLUIR->click();
        p->Text2[4]->setText(QStringLiteral("7"));
        p->INCLUIR->click();
        QList<int> estilos;
        for (const auto& msg : s.mensajes)
            estilos << msg.estilo;
        QCOMPARE(s.textos(), (QStringList{"Indique Numero del Cliente", "Indique Monto Enviado", "Indique Monto Recibido",
                                      "Indique Código de Cliente", "Indique Monto Enviado", "Indique Monto Recibido"}));
        QCOMPARE(estilos, (QList<int>{16, 16, 16, 64, 64, 64}));
        QCOMPARE(p->focusWidget(), p->Text2[5]);
    }

    void clientes_a_mano_y_sus_fotos()
    {
        SesionDePrueba s;
        auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
        const int todos = s.base.valor(QStringLiteral("select count(*) from clientes")).toInt();
        QCOMPARE(p->Celdas1.UpperBound(1) + 1, todos);
        QCOMPARE(p->Celdas2.Value(0, 0).texto(), QStringLiteral("0001"));

        // Any part of the name, capitals or not; a number finds its code; nothing lists all.
        teclear(p->Text1_4, QStringLiteral("perez le"));
        QVERIFY(p->Celdas1.UpperBound(1) >= 0);
        for (int i = 0; i <= p->Celdas1.UpperBound(1); ++i)
            QVERIFY(p->Celdas1.Value(i, 1).texto().contains(QStringLiteral("PEREZ LE")));
        QCOMPARE(p->Text1_4->text(), QString());
        p->Text1_4->setText(QStringLiteral("12"));
        p->Busca->click();
        QCOMPARE(p->Celdas1.Value(0, 0).texto(), QStringLiteral("0012"));
        p->Busca->click();
        QCOMPARE(p->Celdas1.UpperBound(1) + 1, todos);

        // A client created here is known at once by his code.
        p->Procesar->click();
        QCOMPARE(s.ultimoMensaje(), QStringLiteral(" Indique Nombre del Cliente "));
        p->Text1_4->setText(QStringLiteral("ELOY CASTRO"));
        p->Procesar->click();
        QCOMPARE(s.ultimoMensaje(), QStringLiteral("Cliente creado = %1 ELOY CASTRO").arg(todos + 1));
        QCOMPARE(p->Celdas1.UpperBound(1) + 1, todos + 1);
        teclear(p->Text2[2], QString::number(todos + 1));
        QCOMPARE(p->Text2[8]->text(), QStringLiteral("ELOY CASTRO"));
        QCOMPARE(p->List2->count(), 0);

        // The tally: names cut or padded to 14, counts beside.
        s.base.sql(QStringLiteral("update servicios set D_SERVIcio = 'TRANSFERENCIA TRUMIN' where C_SERVIcio = 1;"
                                  "delete from MOVIMIENTOS where C_CLIENTE = 12;"
                                  "insert into MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, tipo_servicio) values"
                                  " ('20010101', 1, 12, 1), ('20010101', 2, 12, 1), ('20010101', 3, 12, 2)"));
        teclear(p->Text2[2], QStringLiteral("12"));
        QCOMPARE(p->List2->item(0)->text(), QStringLiteral("TRANSFERENCIA  2"));
        QCOMPARE(p->List2->item(1)->text(), QStringLiteral("ZELLE          1"));

        // The client's photo beside the entry.
        const QByteArray png = imagen("PNG", Qt::green, QSize(40, 50));
        s.base.sql(QStringLiteral("insert into fotos values (12, x'%1'); update clientes set Revisar='9999' where C_CLIENTE = 137")
                       .arg(QString::fromLatin1(png.toHex())));
        s.base.sql(QStringLiteral("insert into fotos select 137, img from fotos where cliente = 12"));
        const QByteArray sinFoto = Foto::Lee(*s.m, QStringLiteral("0000"), false);
        const QByteArray revision = Foto::Lee(*s.m, QString(), true);

        teclear(p->Text2[2], QStringLiteral("12"));
        QCOMPARE(imagenDe(p->Imagen), comoSeMuestra(png, p->Imagen));
        QCOMPARE(imagenDe(p->Image1), comoSeMuestra(png, p->Image1));
        teclear(p->Text2[2], QStringLiteral("137")); // under review: the warning, whatever his photo
        QCOMPARE(p->Ruta, QStringLiteral("9999"));
        QCOMPARE(imagenDe(p->Imagen), comoSeMuestra(revision, p->Imagen));
        teclear(p->Text2[2], QStringLiteral("13"));
        QCOMPARE(imagenDe(p->Imagen), comoSeMuestra(sinFoto, p->Imagen));
        QVERIFY(imagenDe(p->Imagen) != comoSeMuestra(revision, p->Imagen));
    }

    void lo_que_no_se_teclea_no_se_pega()
    {
        SesionDePrueba s;
        auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
        QLineEdit* enviado = p->Text2[4];
        enviado->setFocus();
        // Ctrl+V as the keyboard sends it (its text is the control character).
        const auto controlV = [enviado] {
            QKeyEvent tecla(QEvent::KeyPress, Qt::Key_V, Qt::ControlModifier, QString(QChar(0x16)));
            QApplication::sendEvent(enviado, &tecla);
        };
        QGuiApplication::clipboard()->setText(QStringLiteral("1D'Angelo"));
        controlV();
        enviado->paste(); // the context menu's "Paste"
        QCOMPARE(enviado->text(), QString());
        // An amount copied from elsewhere still comes in.
        QGuiApplication::clipboard()->setText(QStringLiteral("1.234,50"));
        controlV();
        QCOMPARE(enviado->text(), QStringLiteral("1.234,50"));
        // A text field beside it takes any text.
        QGuiApplication::clipboard()->setText(QStringLiteral("D'Angelo"));
        p->Text2[10]->paste();
        QCOMPARE(p->Text2[10]->text(), QStringLiteral("D'Angelo"));
    }

    void el_servidor_rechaza()
    {
        SesionDePrueba s;
        auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
        const QString antes = s.base.valor(QStringLiteral("select count(*) from MOVIMIENTOS"));
        auto preparar = [](Movimientos* q, const QString& nota) {
            q->Text2[2]->setText(QStringLiteral("0012"));
            q->Text2[4]->setText(QStringLiteral("10"));
            q->Text2[5]->setText(QStringLiteral("9,5"));
            q->Text2[10]->setText(nota);
        };
        // A quote in the note breaks the statement: nothing is stored.
        preparar(p, QStringLiteral("D'Alessandro"));
        QVERIFY_THROWS_EXCEPTION(FalloEjecucion, p->Incluir_Click());
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from MOVIMIENTOS")), antes);

        // Two counters take the same sequence: the second entry is not lost but
        // stored under the next free sequence, which its next preparation passes.
        Module1 otro(s.m->despliegue);
        otro.Conexion.ConnectionString = s.base.cadenaConexion();
        otro.Conexion.Open();
        LOGIN::Carga_Parametros(otro);
        Movimientos segunda(otro, *s.principal);
        segunda.Form_Activate();
        p->Prepara_Transaccion();
        QCOMPARE(segunda.Text2[0]->text(), p->Text2[0]->text());
        const int secuencia = p->Text2[0]->text().toInt();
        preparar(p, QStringLiteral("primera"));
        preparar(&segunda, QStringLiteral("segunda"));
        p->Incluir_Click();
        segunda.Incluir_Click();
        const QString hoy = QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
        QCOMPARE(s.base.valor(QStringLiteral("select group_concat(SECUENCIA || obs) from MOVIMIENTOS where FECHA='%1' and SECUENCIA>=%2")
                                  .arg(hoy)
                                  .arg(secuencia)),
                 QStringLiteral("%1primera,%2segunda").arg(secuencia).arg(secuencia + 1));
        QCOMPARE(segunda.Text2[0]->text().toInt(), secuencia + 2);
    }
};

REGISTRAR_PRUEBA(PruebaMovimientos);
#include "tst_movimientos.moc"
