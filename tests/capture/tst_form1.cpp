// The batch entry screen: lines typed and picked from the lists, checked,
// then sent as new transactions in the entry screen's shape.
#include "escribir.h"
#include "form1.h"
#include "prueba.h"
#include "rejilla.h"
#include "sesion.h"

#include <QDate>
#include <QPushButton>
#include <QTableView>

class PruebaForm1 : public QObject {
    Q_OBJECT
private slots:
    void lote_de_dos_lineas()
    {
        SesionDePrueba s(false);
        s.base.sql(QStringLiteral("INSERT INTO servicios (C_SERVIcio, D_SERVIcio, letra) VALUES (1, 'TRUMIN', 'T'), (2, 'ZELLE', 'Z');"
                                  "INSERT INTO clientes VALUES (12, 'ANA ROJAS', ''), (7, 'LUIS MORA', '');"
                                  "INSERT INTO proveedor (C_proveedor, D_proveedor) VALUES (3, 'PAGOS RAPIDOS')"));
        s.m->Carga_Tablas();
        auto* p = s.abrir<Form1>(QStringLiteral("Form1"));
        QVERIFY(p);
        QCOMPARE(p->Celdas1.UpperBound(1), 1);
        QCOMPARE(p->Celdas2.Value(0, 1).texto(), QStringLiteral("PAGOS RAPIDOS"));

        escribirEnCelda(*p->GRID, 0, 1, QStringLiteral("12"));
        QCOMPARE(p->Celdas.Value(0, 2).texto(), QStringLiteral("ANA ROJAS"));
        escribirEnCelda(*p->GRID, 0, 3, QStringLiteral("100"));
        escribirEnCelda(*p->GRID, 0, 4, QStringLiteral("94,3"));
        escribirEnCelda(*p->GRID, 0, 5, QStringLiteral("3"));
        escribirEnCelda(*p->GRID, 0, 8, QStringLiteral("q"));
        // A line two rows down, its client picked from the list.
        p->GRID->setBookmark(2);
        p->grid1->setBookmark(1);
        emit p->grid1->DblClick();
        QCOMPARE(p->Celdas.Value(2, 1).texto(), QStringLiteral("0012"));
        escribirEnCelda(*p->GRID, 2, 1, QStringLiteral("7"));
        // Enter on the provider list picks it, as the double click does.
        p->grid2->setBookmark(0);
        QTest::keyClick(p->grid2->vista(), Qt::Key_Return);
        QCOMPARE(p->Celdas.Value(2, 6).texto(), QStringLiteral("PAGOS RAPIDOS"));
        escribirEnCelda(*p->GRID, 2, 3, QStringLiteral("50.5"));
        escribirEnCelda(*p->GRID, 2, 4, QStringLiteral("47"));
        escribirEnCelda(*p->GRID, 2, 7, QStringLiteral("2"));

        // An unknown letter stops the batch before anything is sent.
        p->INCLUIR->click();
        QCOMPARE(s.ultimoMensaje(), QStringLiteral("Letra del Servicio no esta asignada"));
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from MOVIMIENTOS")), QStringLiteral("0"));

        escribirEnCelda(*p->GRID, 0, 8, QStringLiteral("z"));
        p->INCLUIR->click();
        const QString hoy = QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
        auto fila = [&](int secuencia) {
            return s.base.valor(QStringLiteral("select FECHA||'|'||SECUENCIA||'|'||C_CLIENTE||'|'||enviado||'|'||recibido||'|'||"
                                               "C_PROVEEDOR||'|'||pago||'|'||C_BANCO||'|'||REFERENCIA||'|'||confirmacion||'|'||"
                                               "operadora||'|'||tipo_operacion||'|'||tipo_servicio||'|'||ganancia||'|'||obs||'|'||"
                                               "g1||'|'||g2||'|'||g3||'|'||fecha_pago||'|'||hora_pago||'|'||dolar1||'|'||"
                                               "dolar2||'|'||bancozelle from MOVIMIENTOS where SECUENCIA = %1").arg(secuencia));
        };
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from MOVIMIENTOS")), QStringLiteral("2"));
        QCOMPARE(fila(1), hoy + QStringLiteral("|1|12|100.0|94.3|3|0.0|||0.0|1|2|2|100.0||94.3|94.3|0.0|||0.0|0.0|0"));
        QCOMPARE(fila(2), hoy + QStringLiteral("|2|7|50.5|47.0|3|0.0|||0.0|2|2|1|100.0||47.0|47.0|0.0|||0.0|0.0|0"));
        // The lines start anew.
        QCOMPARE(p->Celdas.Value(0, 1).texto(), QString());
        QCOMPARE(p->Celdas.Value(2, 7).texto(), QStringLiteral("1"));

        // The operator's cell takes what its column holds, on both servers.
        escribirEnCelda(*p->GRID, 0, 1, QStringLiteral("12"));
        escribirEnCelda(*p->GRID, 0, 7, QStringLiteral("NOELINA"));
        QCOMPARE(p->Celdas.Value(0, 7).texto(), QStringLiteral("NOELI"));
        p->INCLUIR->click();
        QCOMPARE(s.base.valor(QStringLiteral("select operadora from MOVIMIENTOS where SECUENCIA = 3")), QStringLiteral("NOELI"));
    }
};

REGISTRAR_PRUEBA(PruebaForm1);
#include "tst_form1.moc"
