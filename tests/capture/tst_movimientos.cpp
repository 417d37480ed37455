// The entry screen: a transaction typed at the counter, from the keyboard to
// its row in MOVIMIENTOS, with the client look-ups and photos beside it.
#include "escribir.h"
#include "foto.h"
#include "guardada.h"
#include "imagenes.h"
#include "listas.h"
#include "login.h"
#include "mensajes.h"
#include "movimientos.h"
#include "prueba.h"
#include "sesion.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDateEdit>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

using M = Movimientos;

class PruebaMovimientos : public QObject {
    Q_OBJECT
private slots:
    void del_teclado_al_registro()
    {
        SesionDePrueba s;
        s.m->Dolar_Actual = 36.5f;
        auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
        const QString hoy = QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
        const int siguiente =
            s.base.valor(QStringLiteral("select coalesce(max(SECUENCIA),0)+1 from MOVIMIENTOS where FECHA='%1'").arg(hoy))
                .toInt();
        QCOMPARE(p->Text2[M::txtSecuencia]->text(), QString::asprintf("%04d", siguiente));
        QCOMPARE(p->Text2[M::txtNombreOperadora]->text(), QStringLiteral("Ramil"));
        QCOMPARE(p->Text2[M::txtLetra]->text(), QStringLiteral("T"));

        // Operator 1 by Enter: the name gets its trailing blank; 3 leaves it.
        for (auto [operadora, nombre] : {std::pair {"1", "Ramil "}, {"2", "Noelina"}, {"3", "Noelina"}, {"1", "Ramil "}}) {
            teclear(p->Text2[M::txtOperadora], QString::fromLatin1(operadora));
            QCOMPARE(p->Text2[M::txtNombreOperadora]->text(), QString::fromLatin1(nombre));
            QCOMPARE(p->focusWidget(), p->Text2[M::txtCliente]);
        }

        // Codes and amounts take only digits and decimal marks; the note takes anything.
        teclear(p->Text2[M::txtCliente], QStringLiteral("1a2 "));
        QCOMPARE(p->Text2[M::txtCliente]->text(), QStringLiteral("0012"));
        QCOMPARE(p->Text2[M::txtNombreCliente]->text(), s.m->Nombre_Cliente(12));
        QCOMPARE(p->focusWidget(), p->Text2[M::txtLetra]);
        teclear(p->Text2[M::txtLetra], QStringLiteral("t"));
        QCOMPARE(p->focusWidget(), p->Text2[M::txtEnviado]);
        teclear(p->Text2[M::txtEnviado], QStringLiteral("1x00"));
        QCOMPARE(p->Text2[M::txtRecibido]->text(), QStringLiteral("94,30"));
        QCOMPARE(p->Text2[M::txtEstimado]->text(), QString()); // Enter on the sent amount leaves the estimate
        teclear(p->Text2[M::txtRecibido], QStringLiteral(""));
        QCOMPARE(p->Text2[M::txtEstimado]->text(), QStringLiteral("3.441")); // 94,30 x 36,5 cut to whole bolivars
        QCOMPARE(p->focusWidget(), p->Text2[M::txtObservacion]);
        // A note of 600 characters: the field takes what the column holds.
        QString nota;
        for (int i = 0; nota.size() < 600; ++i)
            nota += QStringLiteral("pago urgente %1; ").arg(i);
        teclear(p->Text2[M::txtObservacion], nota);
        QCOMPARE(p->Text2[M::txtObservacion]->text(), nota.left(500));
        p->Combo2->setCurrentIndex(3);
        p->INCLUIR->click();

        QCOMPARE(filaGuardada(s.base, hoy, siguiente).join('|'),
                 QStringLiteral("%1|%2|12|100.0|94.3|0|0.0|||0.0|1|2|1|100.0|%3|94.3|94.3|0.0|||0.0|0.0|3")
                     .arg(hoy)
                     .arg(siguiente)
                     .arg(nota.left(500)));

        // Ready for the next one of the same day.
        QCOMPARE(p->Text2[M::txtSecuencia]->text(), QString::asprintf("%04d", siguiente + 1));
        QCOMPARE(p->Text2[M::txtCliente]->text(), QString());
        QCOMPARE(p->Text2[M::txtLetra]->text(), QStringLiteral("T"));
        QCOMPARE(p->Text2[M::txtNombreServicio]->text(), QStringLiteral("TRUMIN"));
        QCOMPARE(p->Combo2->currentIndex(), 0);
        QCOMPARE(p->List2->count(), 0);
        QCOMPARE(p->Fecha1->date(), QDate::currentDate());
    }

    // Coming back to the screen keeps what is typed; another date numbers anew.
    void vuelta_y_otra_fecha()
    {
        SesionDePrueba s;
        auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
        p->Text2[M::txtObservacion]->setText(QStringLiteral("a medias"));
        p->Form_Activate();
        QCOMPARE(p->Text2[M::txtObservacion]->text(), QStringLiteral("a medias"));
        p->Fecha1->setDate(QDate(2001, 1, 1));
        QCOMPARE(p->Text2[M::txtSecuencia]->text(), QStringLiteral("0001"));
        QCOMPARE(p->Text2[M::txtObservacion]->text(), QString());
    }

    void letras_y_montos()
    {
        SesionDePrueba s;
        // Pesos at 1000 a dollar: 10129 pesos are 10,129 dollars.
        s.base.sql(QStringLiteral("update servicios_usdt set compra = 1000 where equivalencia = 55"));
        s.m->Carga_Tablas();
        auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));

        p->Text2[M::txtLetra]->setText(QStringLiteral("m"));
        QCOMPARE(p->Text2[M::txtLetra]->text(), QStringLiteral("M"));
        QCOMPARE(p->Text2[M::txtNombreServicio]->text(), QStringLiteral("PESOS COLOMBIA"));
        QCOMPARE(p->Cod_Servicio, int16_t(55));
        teclear(p->Text2[M::txtEnviado], QStringLiteral("10129"));
        QCOMPARE(p->Text2[M::txtRecibido]->text(), QStringLiteral("10,12")); // cut, not rounded to 10,13

        // The list, walked with the arrow keys, writes the letter and the name,
        // and the letter picks the service.
        p->List1->setCurrentRow(0);
        p->List1->setFocus();
        QTest::keyClick(p->List1, Qt::Key_Down);
        QCOMPARE(p->Text2[M::txtLetra]->text(), QStringLiteral("Z"));
        QCOMPARE(p->Cod_Servicio, int16_t(2));
        QTest::keyClick(p->List1, Qt::Key_Down);
        QTest::keyClick(p->List1, Qt::Key_Down);
        const QListWidgetItem* elegido = p->List1->item(3);
        QCOMPARE(p->List1->currentItem(), elegido);
        QCOMPARE(p->Text2[M::txtLetra]->text(), elegido->text().mid(1, 1));
        QCOMPARE(p->Text2[M::txtNombreServicio]->text(), elegido->text().mid(5, 20));
        QCOMPARE(int(p->Cod_Servicio), elegido->data(Qt::UserRole).toInt());

        // A letter no service has blocks the save.
        const QString antes = s.base.valor(QStringLiteral("select count(*) from MOVIMIENTOS"));
        p->Text2[M::txtLetra]->setText(QStringLiteral("q"));
        QCOMPARE(p->Text2[M::txtNombreServicio]->text(), QStringLiteral("LETRA NO ASIGNADA"));
        p->Text2[M::txtCliente]->setText(QStringLiteral("0012"));
        p->Text2[M::txtEnviado]->setText(QStringLiteral("5"));
        p->Text2[M::txtRecibido]->setText(QStringLiteral("5"));
        p->INCLUIR->click();
        QCOMPARE(s.ultimoMensaje(), QStringLiteral("Letra del Servicio no esta asignada"));
        QCOMPARE(s.mensajes.last().estilo, int(Mensajes::vbCritical));
        QCOMPARE(p->focusWidget(), p->Text2[M::txtLetra]);
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from MOVIMIENTOS")), antes);
    }

    void avisos_en_su_orden()
    {
        SesionDePrueba s;
        auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
        for (int i : {M::txtCliente, M::txtEnviado, M::txtRecibido})
            teclear(p->Text2[i], QString());
        p->INCLUIR->click();
        p->Text2[M::txtCliente]->setText(QStringLiteral("7"));
        p->INCLUIR->click();
        p->Text2[M::txtEnviado]->setText(QStringLiteral("7"));
        p->INCLUIR->click();
        QList<int> estilos;
        for (const auto& msg : s.mensajes)
            estilos << msg.estilo;
        QCOMPARE(s.textos(), (QStringList {"Indique Numero del Cliente", "Indique Monto Enviado", "Indique Monto Recibido",
                                           "Indique Código de Cliente", "Indique Monto Enviado", "Indique Monto Recibido"}));
        QCOMPARE(estilos, (QList<int> {16, 16, 16, 64, 64, 64}));
        QCOMPARE(p->focusWidget(), p->Text2[M::txtRecibido]);
    }

    void busqueda_y_alta_de_clientes()
    {
        SesionDePrueba s;
        auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
        const int todos = s.base.valor(QStringLiteral("select count(*) from clientes")).toInt();
        QCOMPARE(p->Celdas1.UpperBound(1) + 1, todos);
        QCOMPARE(p->Celdas2.Value(0, Listas::colCodigo).texto(), QStringLiteral("0001"));

        // Any part of the name, capitals or not; a number finds its code; nothing lists all.
        teclear(p->Text1_4, QStringLiteral("perez le"));
        QVERIFY(p->Celdas1.UpperBound(1) >= 0);
        for (int i = 0; i <= p->Celdas1.UpperBound(1); ++i)
            QVERIFY(p->Celdas1.Value(i, Listas::colNombre).texto().contains(QStringLiteral("PEREZ LE")));
        QCOMPARE(p->Text1_4->text(), QString());
        p->Text1_4->setText(QStringLiteral("12"));
        p->Busca->click();
        QCOMPARE(p->Celdas1.Value(0, Listas::colCodigo).texto(), QStringLiteral("0012"));
        p->Busca->click();
        QCOMPARE(p->Celdas1.UpperBound(1) + 1, todos);

        // A client created here is known at once by his code.
        p->Procesar->click();
        QCOMPARE(s.ultimoMensaje(), QStringLiteral(" Indique Nombre del Cliente "));
        p->Text1_4->setText(QStringLiteral("ELOY CASTRO"));
        p->Procesar->click();
        QCOMPARE(s.ultimoMensaje(), QStringLiteral("Cliente creado = %1 ELOY CASTRO").arg(todos + 1));
        QCOMPARE(p->Celdas1.UpperBound(1) + 1, todos + 1);
        teclear(p->Text2[M::txtCliente], QString::number(todos + 1));
        QCOMPARE(p->Text2[M::txtNombreCliente]->text(), QStringLiteral("ELOY CASTRO"));
        QCOMPARE(p->List2->count(), 0);
    }

    // The tally of what the client has used: names cut or padded to 14, counts beside.
    void servicios_del_cliente()
    {
        SesionDePrueba s;
        auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
        s.base.sql(QStringLiteral("update servicios set D_SERVIcio = 'TRANSFERENCIA TRUMIN' where C_SERVIcio = 1;"
                                  "delete from MOVIMIENTOS where C_CLIENTE = 12;"
                                  "insert into MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, tipo_servicio) values"
                                  " ('20010101', 1, 12, 1), ('20010101', 2, 12, 1), ('20010101', 3, 12, 2)"));
        teclear(p->Text2[M::txtCliente], QStringLiteral("12"));
        QCOMPARE(p->List2->item(0)->text(), QStringLiteral("TRANSFERENCIA  2"));
        QCOMPARE(p->List2->item(1)->text(), QStringLiteral("ZELLE          1"));
    }

    // The client's photo beside the entry.
    void foto_del_cliente()
    {
        SesionDePrueba s;
        auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
        const QByteArray png = imagen("PNG", Qt::green, QSize(40, 50));
        s.base.sql(
            QStringLiteral("insert into fotos values (12, x'%1'); update clientes set Revisar='9999' where C_CLIENTE = 137")
                .arg(QString::fromLatin1(png.toHex())));
        s.base.sql(QStringLiteral("insert into fotos select 137, img from fotos where cliente = 12"));
        const QByteArray sinFoto = Foto::Lee(*s.m, QStringLiteral("0000"), false);
        const QByteArray revision = Foto::Lee(*s.m, QString(), true);

        teclear(p->Text2[M::txtCliente], QStringLiteral("12"));
        QCOMPARE(imagenDe(p->Imagen), comoSeMuestra(png, p->Imagen));
        QCOMPARE(imagenDe(p->Image1), comoSeMuestra(png, p->Image1));
        teclear(p->Text2[M::txtCliente], QStringLiteral("137")); // under review: the warning, whatever his photo
        QCOMPARE(p->Ruta, QStringLiteral("9999"));
        QCOMPARE(imagenDe(p->Imagen), comoSeMuestra(revision, p->Imagen));
        teclear(p->Text2[M::txtCliente], QStringLiteral("13"));
        QCOMPARE(imagenDe(p->Imagen), comoSeMuestra(sinFoto, p->Imagen));
        QVERIFY(imagenDe(p->Imagen) != comoSeMuestra(revision, p->Imagen));
    }

    void lo_que_no_se_teclea_no_se_pega()
    {
        SesionDePrueba s;
        auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
        QLineEdit* enviado = p->Text2[M::txtEnviado];
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
        p->Text2[M::txtObservacion]->paste();
        QCOMPARE(p->Text2[M::txtObservacion]->text(), QStringLiteral("D'Angelo"));
    }

    // Two counters take the same sequence: the second entry is not lost but
    // stored under the next free sequence, which its next preparation passes.
    // (A note that breaks the statement: tests/server/tst_guardia.cpp.)
    void dos_mostradores_una_secuencia()
    {
        SesionDePrueba s;
        auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
        auto preparar = [](Movimientos* q, const QString& nota) {
            q->Text2[M::txtCliente]->setText(QStringLiteral("0012"));
            q->Text2[M::txtEnviado]->setText(QStringLiteral("10"));
            q->Text2[M::txtRecibido]->setText(QStringLiteral("9,5"));
            q->Text2[M::txtObservacion]->setText(nota);
        };
        Module1 otro(s.m->despliegue);
        otro.Conexion.ConnectionString = s.base.cadenaConexion();
        otro.Conexion.Open();
        LOGIN::Carga_Parametros(otro);
        Movimientos segunda(otro, *s.principal);
        segunda.Form_Activate();
        p->Prepara_Transaccion();
        QCOMPARE(segunda.Text2[M::txtSecuencia]->text(), p->Text2[M::txtSecuencia]->text());
        const int secuencia = p->Text2[M::txtSecuencia]->text().toInt();
        preparar(p, QStringLiteral("primera"));
        preparar(&segunda, QStringLiteral("segunda"));
        p->Incluir_Click();
        segunda.Incluir_Click();
        const QString hoy = QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
        QCOMPARE(s.base.valor(
                     QStringLiteral("select group_concat(SECUENCIA || obs) from MOVIMIENTOS where FECHA='%1' and SECUENCIA>=%2")
                         .arg(hoy)
                         .arg(secuencia)),
                 QStringLiteral("%1primera,%2segunda").arg(secuencia).arg(secuencia + 1));
        QCOMPARE(segunda.Text2[M::txtSecuencia]->text().toInt(), secuencia + 2);
    }
};

REGISTRAR_PRUEBA(PruebaMovimientos);
#include "tst_movimientos.moc"
