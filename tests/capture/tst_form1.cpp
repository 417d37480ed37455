// The batch entry screen: lines typed and picked from the lists, checked,
// then sent as new transactions in the entry screen's shape.
#include "escribir.h"
#include "form1.h"
#include "guardada.h"
#include "listas.h"
#include "prueba.h"
#include "sesion.h"

#include <QDate>
#include <QPushButton>

class PruebaForm1 : public QObject {
    Q_OBJECT
private slots:
    void lote_de_dos_lineas()
    {
        using F = Form1;
        SesionDePrueba s(false);
        s.base.sql(
            QStringLiteral("INSERT INTO servicios (C_SERVIcio, D_SERVIcio, letra) VALUES (1, 'TRUMIN', 'T'), (2, 'ZELLE', 'Z');"
                           "INSERT INTO clientes VALUES (12, 'ANA ROJAS', ''), (7, 'LUIS MORA', '');"
                           "INSERT INTO proveedor (C_proveedor, D_proveedor) VALUES (3, 'PAGOS RAPIDOS')"));
        s.m->Carga_Tablas();
        auto* p = s.abrir<Form1>(QStringLiteral("Form1"));
        QVERIFY(p);
        QCOMPARE(p->Celdas1.UpperBound(1), 1);
        QCOMPARE(p->Celdas2.Value(0, Listas::colNombre).texto(), QStringLiteral("PAGOS RAPIDOS"));
        auto escribir = [p](int linea, int col, const char* texto) {
            escribirEnCelda(*p->GRID, linea, col, QString::fromUtf8(texto));
        };

        escribir(0, F::colCliente, "12");
        QCOMPARE(p->Celdas.Value(0, F::colNombreCliente).texto(), QStringLiteral("ANA ROJAS"));
        escribir(0, F::colEnviado, "100");
        escribir(0, F::colRecibido, "94,3");
        escribir(0, F::colProveedor, "3");
        escribir(0, F::colLetra, "q");
        // A line two rows down, its client picked from the list.
        p->GRID->setBookmark(2);
        p->grid1->setBookmark(1);
        emit p->grid1->DblClick();
        QCOMPARE(p->Celdas.Value(2, F::colCliente).texto(), QStringLiteral("0012"));
        escribir(2, F::colCliente, "7");
        // Enter on the provider list picks it, as the double click does.
        p->grid2->setBookmark(0);
        QTest::keyClick(p->grid2->vista(), Qt::Key_Return);
        QCOMPARE(p->Celdas.Value(2, F::colNombreProveedor).texto(), QStringLiteral("PAGOS RAPIDOS"));
        escribir(2, F::colEnviado, "50.5");
        escribir(2, F::colRecibido, "47");
        escribir(2, F::colOperadora, "2");

        // An unknown letter stops the batch before anything is sent.
        p->INCLUIR->click();
        QCOMPARE(s.ultimoMensaje(), QStringLiteral("Letra del Servicio no esta asignada"));
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from MOVIMIENTOS")), QStringLiteral("0"));

        escribir(0, F::colLetra, "z");
        p->INCLUIR->click();
        const QString hoy = QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from MOVIMIENTOS")), QStringLiteral("2"));
        QCOMPARE(filaGuardada(s.base, hoy, 1).join('|'),
                 hoy + QStringLiteral("|1|12|100.0|94.3|3|0.0|||0.0|1|2|2|100.0||94.3|94.3|0.0|||0.0|0.0|0"));
        QCOMPARE(filaGuardada(s.base, hoy, 2).join('|'),
                 hoy + QStringLiteral("|2|7|50.5|47.0|3|0.0|||0.0|2|2|1|100.0||47.0|47.0|0.0|||0.0|0.0|0"));
        // The lines start anew.
        QCOMPARE(p->Celdas.Value(0, F::colCliente).texto(), QString());
        QCOMPARE(p->Celdas.Value(2, F::colOperadora).texto(), QStringLiteral("1"));

        // The operator's cell takes what its column holds, on both servers.
        escribir(0, F::colCliente, "12");
        escribir(0, F::colOperadora, "NOELINA");
        QCOMPARE(p->Celdas.Value(0, F::colOperadora).texto(), QStringLiteral("NOELI"));
        p->INCLUIR->click();
        QCOMPARE(s.base.valor(QStringLiteral("select operadora from MOVIMIENTOS where SECUENCIA = 3")), QStringLiteral("NOELI"));
    }
};

REGISTRAR_PRUEBA(PruebaForm1);
#include "tst_form1.moc"
