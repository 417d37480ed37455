// The two plain dollar screens and the USDT services screen, each from its
// fields to the rows it stores.
#include "dolar.h"
#include "dolar_new.h"
#include "escribir.h"
#include "login.h"
#include "movimientos.h"
#include "por_menu.h"
#include "prueba.h"
#include "servicios_usdt.h"
#include "sesion.h"

#include <QLabel>
#include <QPushButton>

class PruebaDolares : public QObject {
    Q_OBJECT
private slots:
    void dolar_simple()
    {
        SesionDePrueba s;
        auto* p = abrirPorMenu<Dolar>(s, "DOLAR_SIMPLE", "Dolar");
        QVERIFY(p);
        QLineEdit* nuevo = p->Text2[Dolar::lnNuevo];
        QCOMPARE(p->Text2[Dolar::lnGuardado]->text(), QStringLiteral("365,5"));
        QVERIFY(p->Label1[Dolar::lnGuardado]->text().startsWith(QStringLiteral("Precio de Dolar al ") +
                                                                QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"))));
        // An empty or blank price is refused and nothing is stored.
        for (const char* vacio : {"", "   "}) {
            nuevo->setText(QString::fromLatin1(vacio));
            QTest::keyClick(p->Actualizar, Qt::Key_Return);
            QCOMPARE(s.ultimoMensaje(), QStringLiteral("Indique Dolar del día"));
            QCOMPARE(s.mensajes.last().estilo, 0);
            QCOMPARE(p->focusWidget(), nuevo);
        }
        QCOMPARE(s.base.valor(QStringLiteral("select valor from dolar")), QStringLiteral("365.5"));
        QCOMPARE(s.m->Dolar_Actual, 0.0f);
        QVERIFY(s.principal->Abierta(QStringLiteral("Dolar")));
        // 380,50 leaves as 380.50; the entry's dollar is its hundredth part of 38050.
        nuevo->setText(QStringLiteral("380,50"));
        p->Actualizar->click();
        QCoreApplication::processEvents();
        QCOMPARE(s.base.valor(QStringLiteral("select valor from dolar")), QStringLiteral("380.5"));
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from dolar")), QStringLiteral("1"));
        QCOMPARE(s.m->Dolar_Actual, 380.5f);
        QVERIFY(!s.m->Rec_Fecha.isEmpty());
        QVERIFY(!s.principal->Abierta(QStringLiteral("Dolar"))); // it unloads itself
    }

    // A session starts with the dollar that the plain screen stored last: the
    // entry screen's first estimate is right without opening that screen.
    void dolar_de_la_sesion()
    {
        SesionDePrueba s;
        s.base.sql(QStringLiteral("UPDATE dolar SET valor = 1234.5"));
        auto* login = static_cast<LOGIN*>(s.principal->Mostrar(QStringLiteral("LOGIN")));
        QCoreApplication::processEvents();
        QCOMPARE(s.m->Dolar_Actual, 1234.5f);
        login->Text1->setText(s.m->Clave);
        QTest::keyClick(login->Text1, Qt::Key_Return);
        QCoreApplication::processEvents();
        QCOMPARE(s.principal->Abierta(QStringLiteral("LOGIN")), nullptr);

        auto* p = abrirPorMenu<Movimientos>(s, "AGREGAR", "Movimientos");
        QVERIFY(p);
        QLineEdit* recibido = p->Text2[Movimientos::txtRecibido];
        recibido->setFocus();
        recibido->setText(QStringLiteral("10,5"));
        QTest::keyClick(recibido, Qt::Key_Return);
        QCOMPARE(p->Text2[Movimientos::txtEstimado]->text(), QStringLiteral("12.962")); // 10,5 x 1.234,5 cut to whole bolivars

        // A book with no stored dollar leaves the estimates at 0.
        SesionDePrueba vacia;
        vacia.base.sql(QStringLiteral("DELETE FROM dolar"));
        vacia.principal->Mostrar(QStringLiteral("LOGIN"));
        QCoreApplication::processEvents();
        QCOMPARE(vacia.m->Dolar_Actual, 0.0f);
    }

    void dolar_por_billetera()
    {
        SesionDePrueba s;
        auto* p = abrirPorMenu<DOLAR_NEW>(s, "DOLAR_BILLETERAS", "DOLAR_NEW");
        QVERIFY(p);
        using D = DOLAR_NEW;
        QCOMPARE(p->Text2[D::bTrumin - 1]->text(), QStringLiteral("332,61"));
        QCOMPARE(p->focusWidget(), p->Text1);

        QTest::keyClick(p->Text1, Qt::Key_Return);
        QCOMPARE(s.ultimoMensaje(), QStringLiteral("Indique Dolar del día"));
        QCOMPARE(s.mensajes.last().estilo, 0);

        QTest::keyClicks(p->Text1, QStringLiteral("100"));
        QTest::keyClick(p->Text1, Qt::Key_Return);
        QStringList derivados;
        for (int b = D::bTrumin; b <= D::bAmazon; ++b)
            derivados << p->Text3[b]->text();
        QCOMPARE(derivados, (QStringList {"91,00", "94,00", "96,00", "85,00"}));
        QCOMPARE(p->Text1->selectedText(), QStringLiteral("100"));

        // The operator corrects ZELLE with a point; the store takes what stands.
        p->Text3[D::bZelle]->setText(QStringLiteral("95.5"));
        p->Actualizar->click();
        QCOMPARE(s.base.valor(QStringLiteral("select TRUMIN || ' ' || ZELLE || ' ' || ZINLI || ' ' || AMAZON from dolar_NEW")),
                 QStringLiteral("91.0 95.5 96.0 85.0"));
        QCOMPARE(s.m->Monto_T(D::bZelle), 95.5f);
        QCOMPARE(s.m->Monto_T(D::bAmazon), 85.0f);
        QCOMPARE(p->Text1->text(), QString());
        QCOMPARE(p->Text3[D::bZelle]->text(), QStringLiteral("95,50"));
        QCOMPARE(p->Text2[D::bZelle - 1]->text(), QStringLiteral("95,50"));
    }

    void servicios_usdt()
    {
        SesionDePrueba s;
        s.base.sql(QStringLiteral("UPDATE parametros SET Fecha_Compraventas = '2020-01-01 00:00:00'"));
        auto* p = s.abrir<SERVICIOS_USDT>(QStringLiteral("SERVICIOS_USDT"));
        using U = SERVICIOS_USDT;
        QCOMPARE(p->Celdas.UpperBound(1), 5);
        QCOMPARE(p->Celdas.Value(3, U::colCompra).texto(), QStringLiteral("4150,0000"));
        QVERIFY(p->Label1[U::lblAhora]->text().startsWith(QStringLiteral("Actualización Precios de Compra/Venta USDT  al : ")));

        // A price change leaves div alone and stamps the last price update.
        escribirEnCelda(*p->GRID, 3, U::colCompra, QStringLiteral("4100.5"));
        p->ACTUALIZAR->click();
        QCOMPARE(s.base.valor(QStringLiteral(
                     "select compra || ' ' || div || ' ' || equivalencia from servicios_usdt where C_SERVIcio = 4")),
                 QStringLiteral("4100.5 1 55"));
        QVERIFY(s.base.valor(QStringLiteral("select Fecha_Compraventas from parametros"))
                    .startsWith(QDate::currentDate().toString(Qt::ISODate)));
        QVERIFY(p->Label1[U::lblUltima]->text().startsWith(QStringLiteral("Ultima actualización : ") +
                                                           QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"))));

        p->Procesar->click();
        QCOMPARE(s.ultimoMensaje(), QStringLiteral("Indique la Descripcipón del Servicio"));
        p->Text2->setText(QStringLiteral("usdt mexico"));
        p->Procesar->click();
        QCOMPARE(s.base.valor(QStringLiteral(
                     "select D_SERVIcio || ' ' || equivalencia || ' ' || div from servicios_usdt where C_SERVIcio = 7")),
                 QStringLiteral("USDT MEXICO 0 0"));
        QCOMPARE(p->Celdas.UpperBound(1), 6);
        QCOMPARE(p->Text2->text(), QString());

        // An empty table, as on a new SQL Server database: no row, and saving is no failure.
        SesionDePrueba vacia;
        vacia.base.sql(QStringLiteral("DELETE FROM servicios_usdt"));
        p = vacia.abrir<SERVICIOS_USDT>(QStringLiteral("SERVICIOS_USDT"));
        QCOMPARE(p->GRID->vista()->model()->rowCount(), 0);
        p->ACTUALIZAR->click();
        QVERIFY(p->Celdas.Vacia());
    }
};
REGISTRAR_PRUEBA(PruebaDolares);

#include "tst_dolares.moc"
