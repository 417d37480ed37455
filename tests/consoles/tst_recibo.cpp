// The receipt of a paid transaction: the PDF that the program's own printer
// leaves at the fixed name, read back as text, its named copy, and the printer
// test.
#include "fallo.h"
#include "form2.h"
#include "mensajes.h"
#include "mesa.h"
#include "referencia.h"
#include "prueba.h"
#include "recibo.h"

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

// A receipt of the second operator's head, the session on the demo data.
struct UnRecibo {
    SesionDePrueba s;
    Recibo r {*s.m};
    const QString carpeta = s.m->despliegue.carpetaRecibos + QLatin1Char('/');
    UnRecibo()
    {
        s.m->Rec_Fecha = QStringLiteral("20241105");
        s.m->Rec_Secuencia = 12;
        s.m->Rec_Operadora = 2;
        s.m->Nom_Cliente = QStringLiteral("PEDRO RAMIREZ");
        s.m->despliegue.web = QStringLiteral("www.cambios.example");
        r.Cod_Concepto = 2;
        r.Rec_Monto = QStringLiteral("94,30");
    }
};

} // namespace

class PruebaRecibo : public QObject {
    Q_OBJECT

private slots:
    void reciboPdfYSuCopia()
    {
        UnRecibo u;
        Recibo& r = u.r;
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
        QCOMPARE(r.Recibo_Nombre, QString("241105012  PEDRO RAMIREZ"));
        QCOMPARE(r.Recibo_Origen, u.carpeta + "Trabajo de Impresion.pdf");
        QCOMPARE(r.Recibo_Destino, u.carpeta + "241105012  PEDRO RAMIREZ.pdf");
        QCOMPARE(u.s.m->Rec_Concepto, QString("AYUDA FAMILIAR"));

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
    }

    // The first operator's head, and with the server's code the other origin name.
    void reciboDeLaPrimeraOperadora()
    {
        UnRecibo u;
        u.s.m->Rec_Operadora = 1;
        u.s.m->Rec_Secuencia = 1234;
        u.s.m->Nivel = true;
        u.r.EMITIR_RECIBO();
        QCOMPARE(u.r.Recibo_Origen, u.carpeta + "TRUMIN.pdf");
        QCOMPARE(u.r.Numero(), QString("2411051234"));
        const QString primera = poppler("pdftotext", u.r.Recibo_Origen).simplified();
        QVERIFY(primera.contains("KESTRA LM, C.A.") && primera.contains("Ramil Ostaven +580000000001"));
        QVERIFY(!primera.contains("VELDAR"));
    }

    void laImpresoraDelRecibo()
    {
        UnRecibo u;
        Recibo& r = u.r;
        // The program's own printer makes PDF, not XPS.
        QVERIFY(!r.Impresora_Es(QStringLiteral("*XPS*")));
        QCOMPARE(u.s.ultimoMensaje(), QString("Atencion : Impresora prederminada no es XPS"));
        QCOMPARE(u.s.mensajes.last().estilo, Mensajes::vbInformation);
        // The test is case-sensitive.
        u.s.m->despliegue.impresora = QStringLiteral("Microsoft Print to pdf");
        QVERIFY(!r.Impresora_Es(QStringLiteral("*PDF*")));
        QCOMPARE(u.s.ultimoMensaje(), QString("Atencion : Impresora prederminada no es PDF"));
        u.s.m->despliegue.impresora = QStringLiteral("Microsoft XPS Document Writer");
        QVERIFY(r.Impresora_Es(QStringLiteral("*XPS*")));
        QCOMPARE(r.Impresora, QString("Microsoft XPS Document Writer"));
    }

    // From the console: the refusals in their order, the concept, the receipt
    // of the one ticked paid row, and its copy.
    void reciboDesdeLaConsola()
    {
        Mesa<Form2> c(conReferencia(kDiezDeMarzo), "Form2", QDate(2025, 3, 10), QDate(2025, 3, 10));
        SesionDePrueba& s = c.s;
        Form2* p = c.p;
        // Espera's two seconds pass at once on a clock that runs a second a call.
        s.m->reloj = [t = QDateTime::currentDateTime()]() mutable { return t = t.addSecs(1); };

        const auto recibo = [&](std::initializer_list<int> filas) {
            for (int f : filas)
                p->Marcar(f);
            p->RECIBO_PDF->click();
            return s.ultimoMensaje();
        };
        const auto marcas = [&] { return c.columna(Form2::colSel).join(QLatin1Char(' ')); };
        QCOMPARE(recibo({}), QString("Error : No selecciono información"));
        QCOMPARE(recibo({0}), QString("Error : La Transacción no esta pagada"));
        QCOMPARE(marcas(), QString("0 0 0 0 0 0"));
        QCOMPARE(recibo({4, 5}), QString("Error : seleccione una sola Transacción"));
        QCOMPARE(marcas(), QString("0 0 0 0 0 0"));
        QCOMPARE(recibo({4}), QString("Error : Indique Código del Concepto de Pago"));
        QCOMPARE(s.mensajes.last().estilo, Mensajes::vbCritical);
        QCOMPARE(marcas(), QString("0 0 0 0 -1 0")); // the tick stays

        // An unknown code is refused; "02" is not the text "2" and passes.
        p->Text6->setText("5");
        p->Text6_Enter();
        QCOMPARE(s.ultimoMensaje(), QString("Error: Concepto no Existe"));
        QVERIFY(p->Text6->text().isEmpty());
        p->Text6->setText("02");
        p->Text6_Enter();
        QCOMPARE(p->Text7->text(), QString("AYUDA FAMILIAR"));
        QVERIFY(p->Text7->isHidden());
        p->Text6_LostFocus();
        const int mensajes = s.mensajes.size();
        p->RECIBO_PDF->click();
        QCOMPARE(s.mensajes.size(), mensajes);
        QVERIFY(p->Text6->text().isEmpty());
        QCOMPARE(marcas(), QString("0 0 0 0 0 0"));

        const QString texto = poppler("pdftotext", p->recibo.Recibo_Origen).simplified();
        for (const char* parte : {"Noelina Varkos", "NUM. RECIBO...........250310005", "CLIENTE....................JOSE DIAZ",
                                  "CONCEPTO...............AYUDA FAMILIAR", "MONTO TOTAL..........188,90 ($ USD)"})
            QVERIFY2(texto.contains(QString::fromUtf8(parte)), parte);
        p->COPIAR->click();
        QVERIFY(QFile::exists(s.m->despliegue.carpetaRecibos + "/250310005  JOSE DIAZ.pdf"));
        QCOMPARE(p->Text7->text(), QString("Recibo Copiado......"));
    }
};

REGISTRAR_PRUEBA(PruebaRecibo);
#include "tst_recibo.moc"
