// What fields do with Enter and with the focus, as the screens ask of them.
#include "controles.h"
#include "pantalla.h"
#include "prueba.h"
#include "sesion.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

class PruebaControles : public QObject {
    Q_OBJECT
private slots:
    void enterLlevaASuAccion()
    {
        QWidget ventana;
        auto* consulta = new QLineEdit(&ventana);
        auto* clave = new QLineEdit(&ventana);
        int consultas = 0, validaciones = 0;
        QString vistoAlValidar;
        int teclasQueLlegan = 0;
        Controles::AlPulsarEnter(consulta, [&] { ++consultas; });
        Controles::AlPulsarEnter(clave, [&] { ++validaciones; vistoAlValidar = clave->text(); }, false);
        connect(consulta, &QLineEdit::returnPressed, [&] { ++teclasQueLlegan; });
        connect(clave, &QLineEdit::returnPressed, [&] { ++teclasQueLlegan; });

        QTest::keyClicks(clave, QStringLiteral("36"));
        QTest::keyClick(clave, Qt::Key_Enter); // the key of the number pad as well
        QTest::keyClick(consulta, Qt::Key_A);
        QTest::keyClick(consulta, Qt::Key_Return);
        QCOMPARE(consultas, 1);
        QCOMPARE(validaciones, 1);
        QCOMPARE(vistoAlValidar, QStringLiteral("36"));
        QCOMPARE(teclasQueLlegan, 1); // only the field that keeps the key receives it
        QCOMPARE(consulta->text(), QStringLiteral("a"));
    }

    void seEscribeSobreElTextoAlEntrar()
    {
        QWidget ventana;
        auto* caja = new QVBoxLayout(&ventana);
        auto* otro = new QLineEdit(&ventana);
        auto* monto = new QLineEdit(QStringLiteral("125,50"), &ventana);
        caja->addWidget(otro);
        caja->addWidget(monto);
        Controles::SeleccionarAlEnfocar(monto);
        Controles::Nombrar(monto, QStringLiteral("Text2"), 4, QStringLiteral(" Monto Enviado "));
        QCOMPARE(monto->objectName(), QStringLiteral("Text2(4)"));
        QCOMPARE(monto->accessibleName(), QStringLiteral("Monto Enviado"));
        ventana.show();
        QVERIFY(QTest::qWaitForWindowExposed(&ventana));
        otro->setFocus();
        monto->setFocus();
        QTRY_COMPARE(monto->selectedText(), QStringLiteral("125,50"));
        QTest::keyClicks(monto, QStringLiteral("90"));
        QCOMPARE(monto->text(), QStringLiteral("90"));
    }

    // Enter on a focused button of any screen presses it once, whether the
    // button takes the key itself (auto-default) or through the program's
    // filter, and whichever of the two Enter keys.
    void enterPulsaCadaBotonUnaVez()
    {
        SesionDePrueba s;
        for (const char* nombre :
             {"Movimientos", "BANCOS", "BANCOS_ZELLE", "Clientes", "Proveedores", "CONCEPTOS", "Form_SERVICIOS", "Form2",
              "Form2_Pago", "F5_USDT", "NEW_DOLAR", "SERVICIOS_USDT", "Dolar", "DOLAR_NEW", "Form1", "CALCULOS01",
              "Resumen_mensual", "CALCULOS01_USDT", "RESUMEN_MENSUAL_USDT"}) {
            auto* p = s.abrir<Pantalla>(QString::fromLatin1(nombre));
            QVERIFY2(p, nombre);
            int botones = 0;
            for (QPushButton* b : p->findChildren<QPushButton*>()) {
                if (!b->isEnabled() || !b->isVisibleTo(p))
                    continue;
                ++botones;
                // Only the count of presses matters here, not what they do.
                QObject::disconnect(b, &QAbstractButton::clicked, nullptr, nullptr);
                int pulsado = 0;
                connect(b, &QAbstractButton::clicked, [&] { ++pulsado; });
                b->setFocus();
                QTest::keyClick(b, Qt::Key_Return);
                QTest::keyClick(b, Qt::Key_Enter);
                QVERIFY2(pulsado == 2, qPrintable(QStringLiteral("%1.%2 pulsado %3 veces")
                                                      .arg(QLatin1String(nombre), b->objectName()).arg(pulsado)));
            }
            QVERIFY2(botones > 0, nombre);
            p->Unload();
            QCoreApplication::processEvents();
        }
        QVERIFY(s.mensajes.isEmpty());
    }
};

REGISTRAR_PRUEBA(PruebaControles);
#include "tst_controles.moc"
