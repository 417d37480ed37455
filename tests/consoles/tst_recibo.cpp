// The receipt of a paid transaction: the PDF that the program's own printer
// leaves at the fixed name, read back as text, its named copy, and the printer
// test.
#include "fallo.h"
#include "mensajes.h"
#include "prueba.h"
#include "recibo.h"
#include "sesion.h"

#include <QFile>
#include <QProcess>

namespace {

// A tool of poppler-utils on a file, its output as text.
QString poppler(const QString& herramienta, const QString& archivo)
{
    QProcess p;
    if (herramienta == QLatin1String("pdfinfo"))
        p.start(herramienta, {archivo});
    else
        p.start(herramienta, {QStringLiteral("-layout"), archivo, QStringLiteral("-")});
    p.waitForFinished(20000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

} // namespace

class PruebaRecibo : public QObject {
    Q_OBJECT

private slots:
    void reciboPdfYSuCopia()
    {
        SesionDePrueba s;
        Recibo r(*s.m);
        s.m->Rec_Fecha = QStringLiteral("20241105");
        s.m->Rec_Secuencia = 12;
        s.m->Rec_Operadora = 2;
        s.m->Nom_Cliente = QStringLiteral("PEDRO RAMIREZ");
        s.m->despliegue.web = QStringLiteral("www.cambios.example");
        r.Cod_Concepto = 2;
        r.Rec_Monto = QStringLiteral("94,30");

        // Copying before any receipt is the run-time failure of a missing file.
        try {
            r.COPIAR();
            QFAIL("copied without a receipt");
        } catch (const FalloEjecucion& f) {
            QCOMPARE(f.numero(), 53L);
        }

        QVERIFY(r.Impresora_Es(QStringLiteral("*PDF*")));
        r.Es_PDF = true;
        r.EMITIR_RECIBO();
        const QString carpeta = s.m->despliegue.carpetaRecibos + QLatin1Char('/');
        QCOMPARE(r.Recibo_Nombre, QString("241105012  PEDRO RAMIREZ"));
        QCOMPARE(r.Recibo_Origen, carpeta + "Trabajo de Impresion.pdf");
        QCOMPARE(r.Recibo_Destino, carpeta + "241105012  PEDRO RAMIREZ.pdf");
        QCOMPARE(s.m->Rec_Concepto, QString("AYUDA FAMILIAR"));

        QVERIFY(poppler("pdfinfo", r.Recibo_Origen).contains(QRegularExpression("Pages:\\s+1\\b")));
        const QString texto = poppler("pdftotext", r.Recibo_Origen);
        for (const char* linea : {"www.cambios.example", "VELDAR ASESORES SERVICIOS ESPECIALES",
                                  "Noelina Varkos Ibáñez +580000000002", "Recibo de Cobro", "NUM. RECIBO...........241105012",
                                  "FECHA EMISIÓN.......05/11/2024", "CLIENTE....................PEDRO RAMIREZ",
                                  "CONCEPTO...............AYUDA FAMILIAR", "MONTO TOTAL..........94,30 ($ USD)"})
            QVERIFY2(texto.simplified().contains(QString::fromUtf8(linea)), linea);
        QVERIFY(!texto.contains("KESTRA"));

        r.COPIAR();
        QFile copia(r.Recibo_Destino), origen(r.Recibo_Origen);
        QVERIFY(copia.open(QIODevice::ReadOnly) && origen.open(QIODevice::ReadOnly));
        QCOMPARE(copia.readAll(), origen.readAll());

        // The first operator's head, and with the server's code the other origin name.
        s.m->Rec_Operadora = 1;
        s.m->Rec_Secuencia = 1234;
        s.m->Nivel = true;
        r.EMITIR_RECIBO();
        QCOMPARE(r.Recibo_Origen, carpeta + "TRUMIN.pdf");
        QCOMPARE(r.Numero(), QString("2411051234"));
        const QString primera = poppler("pdftotext", r.Recibo_Origen).simplified();
        QVERIFY(primera.contains("KESTRA LM, C.A.") && primera.contains("Ramil Ostaven +580000000001"));
        QVERIFY(!primera.contains("VELDAR"));
    }

    void pruebaDeLaImpresora()
    {
        SesionDePrueba s;
        Recibo r(*s.m);
        // The program's own printer makes PDF, not XPS.
        QVERIFY(!r.Impresora_Es(QStringLiteral("*XPS*")));
        QCOMPARE(s.ultimoMensaje(), QString("Atencion : Impresora prederminada no es XPS"));
        QCOMPARE(s.mensajes.last().estilo, Mensajes::vbInformation);
        // The test is case-sensitive.
        s.m->despliegue.impresora = QStringLiteral("Microsoft Print to pdf");
        QVERIFY(!r.Impresora_Es(QStringLiteral("*PDF*")));
        QCOMPARE(s.ultimoMensaje(), QString("Atencion : Impresora prederminada no es PDF"));
        s.m->despliegue.impresora = QStringLiteral("Microsoft XPS Document Writer");
        QVERIFY(r.Impresora_Es(QStringLiteral("*XPS*")));
        QCOMPARE(r.Impresora, QString("Microsoft XPS Document Writer"));
    }
};

REGISTRAR_PRUEBA(PruebaRecibo);
#include "tst_recibo.moc"
