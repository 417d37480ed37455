// What fields do with Enter and with the focus, as the screens ask of them
// (every screen's buttons: tests/app/tst_programa.cpp).
#include "controles.h"
#include "prueba.h"

#include <QLineEdit>
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
        Controles::AlPulsarEnter(
            clave,
            [&] {
                ++validaciones;
                vistoAlValidar = clave->text();
            },
            false);
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
};

REGISTRAR_PRUEBA(PruebaControles);
#include "tst_controles.moc"
