// The printed report of the statistics screens, printed to a PDF file and read
// back as text: the business's name, the period and the filters, the tables
// with their totals, the numbered pages, the headings repeated on each page a
// table reaches; and the preview reached by Ctrl+P.
#include "calculos01.h"
#include "informe.h"
#include "prueba.h"
#include "resumen_mensual.h"
#include "tst_grafico_datos.h"

#include <QApplication>
#include <QMenu>
#include <QPrinter>
#include <QProcess>
#include <QRadioButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextDocument>

namespace {

using C = CALCULOS01;

// The report printed to a PDF file, as pdftotext reads it (the pages
// parted by a form feed).
QString textoImpreso(const QTextDocument& doc, int* paginas = nullptr)
{
    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("informe.pdf"));
    QPrinter impresora(QPrinter::HighResolution);
    impresora.setOutputFormat(QPrinter::PdfFormat);
    impresora.setOutputFileName(pdf);
    impresora.setPageSize(QPageSize(QPageSize::A4));
    const int n = Informe::Imprimir(doc, impresora);
    if (paginas)
        *paginas = n;
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    p.waitForFinished(30000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

} // namespace

class PruebaInforme : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            QSKIP("falta pdftotext (poppler-utils)");
    }
    void cleanup() { Informe::Reemplazar({}); }

    void titulo_data()
    {
        QTest::addColumn<QString>("titulo");
        QTest::addColumn<QString>("web");
        QTest::addColumn<QString>("esperado");
        QTest::newRow("el suyo") << "CAMBIOS EL LLANO" << "www.llano.com" << "CAMBIOS EL LLANO";
        QTest::newRow("la web de los recibos") << "  " << "www.llano.com" << "www.llano.com";
        QTest::newRow("ninguno") << "" << "" << "Control de Pagos";
    }
    void titulo()
    {
        QFETCH(QString, titulo);
        QFETCH(QString, web);
        QFETCH(QString, esperado);
        Despliegue d;
        d.tituloInforme = titulo;
        d.web = web;
        QCOMPARE(Informe::Titulo(d), esperado);
    }

    void informe_impreso_data()
    {
        QTest::addColumn<QString>("pantalla");
        QTest::addColumn<QStringList>("textos");
        // The totals line of the days: days with data, received, directs,
        // transactions, the gain's share and the gain.
        QTest::newRow("mes") << "CALCULOS01"
                             << QStringList({"Estadísticas día por día — Marzo 2025", "Operadora: Noelina — Servicio: Todos",
                                             "Promedio diario: 2.125 — Balance: 4.000", "4.000",
                                             "Tot-G", "Nombre Cliente", "PROV 10"});
        QTest::newRow("año") << "Resumen_mensual"
                             << QStringList({"Estadísticas mes por mes — Año 2025", "Operadora: Noelina — Servicio: Todos",
                                             "2025-03", "4.250", "PROV 10"});
    }
    void informe_impreso()
    {
        QFETCH(QString, pantalla);
        QFETCH(QStringList, textos);
        Estadistica<C> t(qPrintable(pantalla));
        t.cargar();
        t.p->Option2[C::opNoelina]->click();
        int paginas = 0;
        const QString impreso = textoImpreso(*Informe::Documento(*t.p, QStringLiteral("CAMBIOS EL LLANO")), &paginas);
        QVERIFY2(impreso.trimmed().startsWith(QLatin1String("CAMBIOS EL LLANO")), qPrintable(impreso.left(300)));
        for (const QString& texto : textos)
            QVERIFY2(impreso.contains(texto), qPrintable(texto));
        QVERIFY(paginas >= 1);
        QVERIFY(impreso.contains(QStringLiteral("Página 1 de %1").arg(paginas)));
        QVERIFY(impreso.contains(QStringLiteral("Página %1 de %1").arg(paginas)));
        // The totals line under the days (the months): the screen's footers.
        const QString totales = t.p->GRID->Columns(C::colRecibido).FooterText();
        QCOMPARE(totales, QStringLiteral("4.250"));
        QVERIFY(impreso.contains(totales));
    }

    // A table longer than a page repeats its heading row on the next page.
    void cabeceras_en_cada_pagina()
    {
        QString clientes, filas;
        for (int k = 100; k < 260; ++k) {
            clientes += QStringLiteral("INSERT INTO clientes VALUES (%1, 'CLIENTE %1', '');").arg(k);
            filas += QStringLiteral("INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, "
                                    "C_BANCO, operadora, tipo_operacion, tipo_servicio, g2) "
                                    "VALUES ('20250305', %1, %1, 10, 10, 1, '0134', '1', 2, 1, 1);")
                         .arg(k);
        }
        Estadistica<C> t("CALCULOS01", clientes + filas);
        t.cargar();
        int paginas = 0;
        const QStringList hojas = textoImpreso(*Informe::Documento(*t.p, QStringLiteral("X")), &paginas).split(QLatin1Char('\f'));
        QVERIFY(paginas >= 3);
        int conClientes = 0;
        for (int i = 0; i < paginas; ++i) {
            const QString& hoja = hojas[i];
            QVERIFY(hoja.contains(QStringLiteral("Página %1 de %2").arg(i + 1).arg(paginas)));
            if (hoja.contains(QLatin1String("CLIENTE "))) {
                ++conClientes;
                QVERIFY2(hoja.contains(QLatin1String("Nombre Cliente")), qPrintable(QStringLiteral("página %1").arg(i + 1)));
            }
        }
        QVERIFY(conClientes >= 2);
    }

    // Ctrl+P anywhere on the screen builds the report of what it shows and
    // hands it to the preview; the setting informe/titulo names it.
    void vista_previa_con_ctrl_p()
    {
        Estadistica<C> t("CALCULOS01");
        t.s.m->despliegue.tituloInforme = QStringLiteral("CAMBIOS EL LLANO");
        t.cargar();
        QStringList vistos;
        Informe::Reemplazar([&vistos](const QTextDocument& doc) { vistos << doc.toPlainText(); });
        QApplication::setActiveWindow(t.s.principal.get());
        t.p->Text1[C::txtAno]->setFocus();
        QTest::keyClick(t.p->Text1[C::txtAno], Qt::Key_P, Qt::ControlModifier);
        QCOMPARE(vistos.size(), 1);
        QVERIFY(vistos[0].startsWith(QLatin1String("CAMBIOS EL LLANO\n")));
        QVERIFY(vistos[0].contains(QLatin1String("Marzo 2025")));
        QVERIFY(vistos[0].contains(QLatin1String("5.800")));
        // The grid's menu entry does the same.
        t.p->GRID5->menuContextual()->actions().last()->trigger();
        QCOMPARE(vistos.size(), 2);
    }
};

REGISTRAR_PRUEBA(PruebaInforme);
#include "tst_informe.moc"
