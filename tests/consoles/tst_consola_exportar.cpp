// The name the three consoles propose for an export: the query's date range.
#include "consola.h"
#include "prueba.h"
#include "sesion.h"

#include <QDateEdit>

class PruebaConsolaExportar : public QObject {
    Q_OBJECT

private slots:
    void nombreDelArchivo_data()
    {
        QTest::addColumn<QString>("pantalla");
        QTest::addColumn<QDate>("desde");
        QTest::addColumn<QDate>("hasta");
        QTest::addColumn<QString>("esperado");
        for (const char* p : {"Form2", "Form2_Pago", "F5_USDT"}) {
            QTest::addRow("%s, un día", p) << p << QDate(2026, 11, 24) << QDate(2026, 11, 24) << "consulta-2026-11-24";
            QTest::addRow("%s, un intervalo", p)
                << p << QDate(2026, 11, 1) << QDate(2026, 11, 24) << "consulta-2026-11-01-a-2026-11-24";
        }
    }
    void nombreDelArchivo()
    {
        QFETCH(QString, pantalla);
        QFETCH(QDate, desde);
        QFETCH(QDate, hasta);
        QFETCH(QString, esperado);
        SesionDePrueba s;
        auto* c = s.abrir<Consola>(pantalla);
        c->Fecha1->setDate(desde);
        c->Fecha2->setDate(hasta);
        QCOMPARE(c->GRID->nombreArchivo(), esperado);
    }
};

REGISTRAR_PRUEBA(PruebaConsolaExportar);
#include "tst_consola_exportar.moc"
