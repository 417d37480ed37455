// The two plain dollar screens and the USDT services screen, each from its
// fields to the rows it stores.
#include "dolar.h"
#include "dolar_new.h"
#include "escribir.h"
#include "login.h"
#include "movimientos.h"
#include "por_menu.h"
#include "prueba.h"
#include "rejilla.h"
#include "servicios_usdt.h"
#include "sesion.h"

#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTableView>

class PruebaDolares : public QObject {
    Q_OBJECT
private slots:
    void dolar_simple()
    {
        SesionDePrueba s;
        auto* p = abrirPorMenu<Dolar>(s, "DOLAR_SIMPLE", "Dolar");
        QVERIFY(p);
        QCOMPARE(p->Text2[0]->text(), QStringLiteral("365,5"));
        QVERIFY(p->Label1[0]->text().startsWith(QStringLiteral("Precio de Dolar al ") +
                                                QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"))));
        // An empty or blank price is refused and nothing is stored.
        for (const char* vacio : {"", "   "}) {
            p->Text2[1]->setText(QString::fromLatin1(vacio));
            QTest::keyClick(p->Actualizar, Qt::Key_Return);
            QCOMPARE(s.ultimoMensaje(), QStringLiteral("Indique Dolar del día"));
            QCOMPARE(s.mensajes.last().estilo, 0);
            QCOMPARE(p->focusWidget(), p->Text2[1]);
        }
        QCOMPARE(s.base.valor(QStringLiteral("select valor from dolar")), QStringLiteral("365.5"));
        QCOMPARE(s.m->Dolar_Actual, 0.0f);
        QVERIFY(s.principal->Abierta(QStringLiteral("Dolar")));
        // 380,50 leaves as 380.50; the entry's dollar is its hundredth part of 38050.
        p->Text2[1]->setText(QStringLiteral("380,50"));
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
        p->Text2[5]->setFocus();
        p->Text2[5]->setText(QStringLiteral("10,5"));
        QTest::keyClick(p->Text2[5], Qt::Key_Return);
        QCOMPARE(p->Text2[6]->text(), QStringLiteral("12.962")); // 10,5 x 1.234,5 cut to whole bolivars

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
        QCOMPARE(p->Text2[0]->text(), QStringLiteral("332,61"));
        QCOMPARE(p->focusWidget(), p->Text1);

        QTest::keyClick(p->Text1, Qt::Key_Return);
        QCOMPARE(s.ultimoMensaje(), QStringLiteral("Indique Dolar del día"));
        QCOMPARE(s.mensajes.last().estilo, 0);

        QTest::keyClicks(p->Text1, QStringLiteral("100"));
        QTest::keyClick(p->Text1, Qt::Key_Return);
        QStringList derivados;
        for (int i = 1; i <= 4; ++i)
            derivados << p->Text3[i]->text();
        QCOMPARE(derivados, (QStringList{"91,00", "94,00", "96,00", "85,00"}));
        QCOMPARE(p->Text1->selectedText(), QStringLiteral("100"));

        // The operator corrects ZELLE with a point; the store takes what stands.
        p->Text3[2]->setText(QStringLiteral("95.5"));
        p->Actualizar->click();
        QCOMPARE(s.base.valor(QStringLiteral("select TRUMIN || ' ' || ZELLE || ' ' || ZINLI || ' ' || AMAZON from dolar_NEW")),
                 QStringLiteral("91.0 95.5 96.0 85.0"));
        QCOMPARE(s.m->Monto_T(2), 95.5f);
        QCOMPARE(s.m->Monto_T(4), 85.0f);
        QCOMPARE(p->Text1->text(), QString());
        QCOMPARE(p->Text3[2]->text(), QStringLiteral("95,50"));
        QCOMPARE(p->Text2[1]->text(), QStringLiteral("95,50"));
    }

    void servicios_usdt()
    {
        SesionDePrueba s;
        s.base.sql(QStringLiteral("UPDATE parametros SET Fecha_Compraventas = '2020-01-01 00:00:00'"));
        auto* p = s.abrir<SERVICIOS_USDT>(QStringLiteral("SERVICIOS_USDT"));
        QCOMPARE(p->Celdas.UpperBound(1), 5);
        QCOMPARE(p->Celdas.Value(3, 2).texto(), QStringLiteral("4150,0000"));
        QVERIFY(p->Label1[1]->text().startsWith(QStringLiteral("Actualización Precios de Compra/Venta USDT  al : ")));

        // A price change leaves div alone and stamps the last price update.
        escribirEnCelda(*p->GRID, 3, 2, QStringLiteral("4100.5"));
        p->ACTUALIZAR->click();
        QCOMPARE(s.base.valor(QStringLiteral("select compra || ' ' || div || ' ' || equivalencia from servicios_usdt where C_SERVIcio = 4")),
                 QStringLiteral("4100.5 1 55"));
        QVERIFY(s.base.valor(QStringLiteral("select Fecha_Compraventas from parametros")).startsWith(QDate::currentDate().toString(Qt::ISODate)));
        QVERIFY(p->Label1[2]->text().startsWith(QStringLiteral("Ultima actualización : ") +
                                                QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"))));

        p->Procesar->click();
        QCOMPARE(s.ultimoMensaje(), QStringLiteral("Indique la Descripcipón del Servicio"));
        p->Text2->setText(QStringLiteral("usdt mexico"));
        p->Procesar->click();
        QCOMPARE(s.base.valor(QStringLiteral("select D_SERVIcio || ' ' || equivalencia || ' ' || div from servicios_usdt where C_SERVIcio = 7")),
                 QStringLiteral("USDT MEXICO 0 0"));
        QCOMPARE(p->Celdas.UpperBound(1), 6);
        QCOMPARE(p->Text2->text(), QString());
    }

    // Each screen stands at its fixed place and size (twips, 15 to a pixel).
    void lugar_de_cada_pantalla()
    {
        SesionDePrueba s;
        const struct {
            const char* nombre;
            int top, left, width, height;
        } lugares[] = {
            {"Dolar", 3000, 5001, 6550, 2700},   {"DOLAR_NEW", 2000, 3001, 12550, 5000},
            {"NEW_DOLAR", 100, 500, 20050, 9500}, {"SERVICIOS_USDT", 100, 5001, 10050, 9500},
            {"Form1", 100, 101, 20050, 10000},
        };
        for (const auto& l : lugares) {
            Pantalla* p = s.abrir<Pantalla>(QString::fromLatin1(l.nombre));
            QVERIFY(p);
            QCOMPARE(p->ventana()->geometry(), QRect(Pantalla::px(l.left), Pantalla::px(l.top), Pantalla::px(l.width),
                                                     Pantalla::px(l.height)));
        }
    }
};
REGISTRAR_PRUEBA(PruebaDolares);

#include "tst_dolares.moc"
