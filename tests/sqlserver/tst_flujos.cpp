// The operators' daily work through the real screens, once on SQL Server (as
// TRUMIN) and once on the embedded twin holding the same rows: an entry, two
// counters on one sequence, a console's corrections, a payment run with the
// provider's gift, a delete, a batch entry, the rate panel's store and a new
// client with his photograph. Each flow must leave the same stored rows on
// both servers. Flows that create rows use dates of 2031, which no other test
// touches; what the flows change is put back at the end, on both servers.
#include "clientes.h"
#include "form1.h"
#include "foto.h"
#include "login.h"
#include "mensajes.h"
#include "mostrador.h"
#include "movimientos.h"
#include "new_dolar.h"
#include "prueba.h"
#include "tsql.h"

#include <QAction>
#include <QBuffer>
#include <QComboBox>
#include <QFile>
#include <QImage>
#include <QRandomGenerator>

namespace {

enum class Lado { SqlServer, Embebido };
constexpr Lado kLados[] = {Lado::SqlServer, Lado::Embebido};

const char* nombre(Lado l) { return l == Lado::SqlServer ? "SQL Server" : "embedded"; }

ServidorTsql& servidor() { return *ServidorTsql::instancia(); }

QString cadena(Lado l)
{
    return l == Lado::SqlServer ? servidor().cadenaTrumin() : servidor().gemelo().cadenaConexion();
}

// The rows of a table that meet a condition, as comparable lines.
QStringList filas(Lado l, const QString& tabla, const QString& donde, const QString& orden)
{
    const QString filtrada = tabla + QStringLiteral(" WHERE ") + donde;
    return l == Lado::SqlServer ? servidor().tablaSqlServer(filtrada, orden)
                                : ServidorTsql::tablaEmbebida(servidor().gemelo().archivo(), filtrada, orden);
}

QString ymd(const QDate& fecha) { return fecha.toString(QStringLiteral("yyyyMMdd")); }

QStringList movimientos(Lado l, const QDate& fecha)
{
    return filas(l, QStringLiteral("MOVIMIENTOS"), QStringLiteral("FECHA = '%1'").arg(ymd(fecha)), QStringLiteral("SECUENCIA"));
}

// Columns of MOVIMIENTOS by their place in a row.
enum Columna {
    kSecuencia = 1, kCliente = 2, kRecibido = 4, kProveedor = 5, kBanco = 7, kReferencia = 8, kOperadora = 10, kObs = 19,
    kFechaPago = 23
};

// One column of each row, "sequence:value".
QStringList columna(const QStringList& lineas, int col)
{
    QStringList r;
    for (const QString& l : lineas)
        r << l.section(QLatin1Char('|'), kSecuencia, kSecuencia) + QLatin1Char(':') + l.section(QLatin1Char('|'), col, col);
    return r;
}

// A number of the twin with every digit, for putting it back as it was.
QString exacto(const QString& columna, const QString& desde)
{
    return servidor().gemelo().valor(QStringLiteral("SELECT printf('%.17g', %1) FROM %2").arg(columna, desde));
}

// The same statement on both servers, as their administrator would run it.
void enAmbos(const QString& sqlServer, const QString& embebido)
{
    QCOMPARE(servidor().admin(sqlServer), QString());
    servidor().gemelo().sql(embebido);
}
void enAmbos(const QString& sql) { enAmbos(sql, sql); }

// Unpaid rows of a date, laid out as the entry screen leaves them; the fourth
// is paid by BANESCO through provider 3.
QString filasSinPagar(const QDate& fecha)
{
    return QStringLiteral(
               "INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, pago, C_BANCO, "
               "REFERENCIA, confirmacion, operadora, tipo_operacion, tipo_servicio, ganancia, obs, g1, g2, g3, fecha_pago, "
               "hora_pago, dolar1, dolar2, bancozelle) VALUES "
               "('%1', 1, 12, 100, 94.3, 0, 0, '', '', 0, '1', 2, 1, 100, '', 94.3, 94.3, 0, '', '', 0, 0, '0'), "
               "('%1', 2, 13, 20.5, 20.5, 0, 0, '', '', 0, '2', 2, 5, 100, 'URGENTE', 20.5, 20.5, 0, '', '', 0, 0, '0'), "
               "('%1', 3, 12, 123450, 30, 0, 0, '', '', 0, '1', 2, 55, 100, '', 30, 30, 0, '', '', 0, 0, '0'), "
               "('%1', 4, 14, 200, 188.9, 3, 68000, '0134', 'R555', 360, '2', 1, 1, 5.5, '', 10.39, 10.39, 0, "
               "'20310101', '10:00:00', 398, 405, '3')")
        .arg(ymd(fecha));
}

// The notes of a date's rows, "sequence:note". SQL Server's are read in two
// halves: a whole note whose letters with accents make it longer in UTF-8
// than its column does not come back through the ODBC driver (the fault that
// notaLargaEnLaConsola shows), and the stored text is what is compared here.
QStringList notas(Lado l, const QDate& fecha)
{
    QStringList r;
    if (l == Lado::Embebido)
        return columna(movimientos(l, fecha), kObs);
    for (const QStringList& f : servidor().filas(QStringLiteral("SELECT SECUENCIA, CAST(SUBSTRING(obs, 1, 250) AS varchar(500)), "
                                                                "CAST(SUBSTRING(obs, 251, 250) AS varchar(500)) "
                                                                "FROM dbo.MOVIMIENTOS WHERE FECHA = '%1' ORDER BY SECUENCIA")
                                                     .arg(ymd(fecha))))
        r << f.value(0) + QLatin1Char(':') + f.value(1) + f.value(2);
    return r;
}

// The rows without their notes, compared on their own by notas().
QStringList sinNotas(const QStringList& lineas)
{
    QStringList r;
    for (const QString& l : lineas) {
        QStringList c = l.split(QLatin1Char('|'));
        c[kObs] = QStringLiteral("(nota)");
        r << c.join(QLatin1Char('|'));
    }
    return r;
}

// A note as long as its column holds, every tenth letter an accented one.
QString notaLarga()
{
    QString r;
    for (int i = 0; r.size() < 500; ++i)
        r += QStringLiteral("pagar a Peñ%1 ").arg(i % 10);
    return r.left(500);
}

// A photograph of random pixels: a file far larger than a text column or a
// driver's default chunk, as a camera's picture is.
QByteArray fotoGrande()
{
    QImage i(420, 560, QImage::Format_RGB32);
    QRandomGenerator azar(2031);
    for (int y = 0; y < i.height(); ++y)
        for (int x = 0; x < i.width(); ++x)
            i.setPixel(x, y, azar.generate() | 0xff000000u);
    QByteArray bytes;
    QBuffer b(&bytes);
    b.open(QIODevice::WriteOnly);
    i.save(&b, "PNG");
    return bytes;
}

const QDate kEntrada(2031, 3, 3), kChoque(2031, 3, 4), kConsola(2031, 3, 5), kPago(2031, 3, 6), kBorrado(2031, 3, 8),
    kLote(2031, 3, 10), kNota(2031, 3, 11);

} // namespace

class PruebaFlujos : public QObject {
    Q_OBJECT

    // What each flow changed beyond its own dates, to be put back on both servers.
    QList<std::pair<QString, QString>> deshacer_;
    int ultimoCliente_ = 0;
    QList<QStringList> inicio_; // the tables the flows change, as the class found them

    // Runs a flow on a new operator's session of each server, SQL Server first;
    // stops at the first failure. Nothing the program says in a box is expected.
    template <class F>
    void enCadaServidor(F flujo)
    {
        for (Lado l : kLados) {
            SesionDePrueba s(cadena(l));
            flujo(s, l);
            if (QTest::currentTestFailed()) {
                qWarning("the flow failed on %s", nombre(l));
                return;
            }
            QVERIFY2(s.mensajes.isEmpty(), qPrintable(QStringLiteral("%1: ").arg(QLatin1String(nombre(l))) + s.textos().join(" / ")));
        }
    }

private slots:
    void initTestCase()
    {
        ultimoCliente_ = servidor().filas(QStringLiteral("SELECT MAX(C_CLIENTE) FROM dbo.clientes")).value(0).value(0).toInt();
        QVERIFY(ultimoCliente_ > 0);
        for (const char* tabla : {"servicios", "proveedor", "parametros", "clientes", "fotos"})
            inicio_ << servidor().tablaSqlServer(QLatin1String(tabla), QStringLiteral("1"));
    }

    // Entries typed on the entry screen: a Zelle transfer with its bank and a
    // note with accents, then pesos with their decimals and a note as long as
    // its column.
    void entrada()
    {
        enCadaServidor([](SesionDePrueba& s, Lado) {
            auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
            p->Fecha1->setDate(kEntrada);
            QCOMPARE(p->Text2[0]->text(), QStringLiteral("0001"));
            teclear(p, {{1, "2"}, {2, "12"}, {11, "z"}, {4, "250,75"}, {5, "236,4"}});
            p->Text2[10]->setText(QStringLiteral("entrega en Mérida, señora Peña (ñ, ü, ç)"));
            p->Combo2->setCurrentIndex(3);
            p->INCLUIR->click();
            QCOMPARE(p->Text2[0]->text(), QStringLiteral("0002"));

            teclear(p, {{2, "137"}, {11, "m"}, {4, "10129"}, {5, "2,5"}});
            p->Text2[10]->setText(notaLarga());
            QCOMPARE(p->Text2[10]->text().size(), 500);
            p->INCLUIR->click();
            QCOMPARE(p->Text2[0]->text(), QStringLiteral("0003"));
        });
        const QStringList sqlServer = movimientos(Lado::SqlServer, kEntrada);
        const QStringList notasEsperadas{"1:entrega en Mérida, señora Peña (ñ, ü, ç)", "2:" + notaLarga()};
        QCOMPARE(notas(Lado::SqlServer, kEntrada), notasEsperadas);
        QCOMPARE(notas(Lado::Embebido, kEntrada), notasEsperadas);
        QCOMPARE(columna(sqlServer, kRecibido), (QStringList{"1:236.4", "2:2.5"}));
        QCOMPARE(columna(sqlServer, kCliente), (QStringList{"1:12", "2:137"}));
        QCOMPARE(sinNotas(sqlServer), sinNotas(movimientos(Lado::Embebido, kEntrada)));
    }

    // A note as long as its column, with accents, is shown whole by the
    // console, and a save of another cell of its row keeps it.
    void notaLargaEnLaConsola()
    {
        enAmbos(QStringLiteral("INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, operadora, tipo_servicio, obs) "
                               "VALUES ('%1', 1, 12, 10, 9.5, '1', 1, '%2')")
                    .arg(ymd(kNota), notaLarga()));
        QCOMPARE(notas(Lado::SqlServer, kNota), QStringList{"1:" + notaLarga()});
        QMap<Lado, QString> vistas;
        enCadaServidor([&vistas](SesionDePrueba& s, Lado l) {
            Form2* p = consola(s, kNota);
            QCOMPARE(p->Celdas.filas(), 1);
            vistas[l] = p->Celdas.Value(0, 22).texto();
            escribirEnCelda(*p->GRID, 0, 11, QStringLiteral("RECIBO 77"));
            p->ACTUALIZAR->click();
        });
        QCOMPARE(vistas.value(Lado::Embebido), notaLarga());
        QCOMPARE(vistas.value(Lado::SqlServer), notaLarga());
        QCOMPARE(notas(Lado::Embebido, kNota), QStringList{"1:" + notaLarga()});
        QCOMPARE(notas(Lado::SqlServer, kNota), QStringList{"1:" + notaLarga()});
        QCOMPARE(columna(movimientos(Lado::SqlServer, kNota), kReferencia), QStringList{"1:RECIBO 77"});
        QCOMPARE(sinNotas(movimientos(Lado::SqlServer, kNota)), sinNotas(movimientos(Lado::Embebido, kNota)));
    }

    // Two counters prepared on one date both store: the second is stored under
    // the next free sequence by the server. A screen whose number went stale
    // meanwhile, behind another counter or behind a batch, is moved on too.
    void dosMostradoresEnUnaSecuencia()
    {
        enCadaServidor([](SesionDePrueba& s, Lado) {
            auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
            Module1 otro(s.m->despliegue);
            otro.Conexion.ConnectionString = s.m->Conexion.ConnectionString;
            otro.Conexion.Open();
            LOGIN::Carga_Parametros(otro);
            Movimientos segunda(otro, *s.principal);
            segunda.Form_Activate();
            p->Fecha1->setDate(kChoque);
            segunda.Fecha1->setDate(kChoque);
            QCOMPARE(p->Text2[0]->text(), QStringLiteral("0001"));
            QCOMPARE(segunda.Text2[0]->text(), QStringLiteral("0001"));
            const auto llenar = [](Movimientos* q, const char* cliente, const char* nota) {
                teclear(q, {{2, cliente}, {4, "10"}});
                q->Text2[10]->setText(QString::fromLatin1(nota));
            };
            llenar(p, "12", "primera");
            llenar(&segunda, "13", "segunda");
            p->INCLUIR->click();
            segunda.INCLUIR->click();
            QCOMPARE(segunda.Text2[0]->text(), QStringLiteral("0003"));
            // The first screen prepared its next number before the second stored.
            QCOMPARE(p->Text2[0]->text(), QStringLiteral("0002"));
            llenar(p, "14", "tercera");
            p->INCLUIR->click();
            QCOMPARE(p->Text2[0]->text(), QStringLiteral("0004"));

            // A batch of two lines stores 4 and 5 while the screen still shows 4.
            auto* lote = s.abrir<Form1>(QStringLiteral("Form1"));
            lote->Fecha1->setDate(kChoque);
            for (int fila : {0, 1})
                escribirEnFila(*lote->GRID, fila, {{1, "15"}, {3, "20"}, {4, "18,5"}});
            lote->INCLUIR->click();
            llenar(p, "16", "cuarta");
            p->INCLUIR->click();
        });
        const QStringList sqlServer = movimientos(Lado::SqlServer, kChoque);
        QCOMPARE(columna(sqlServer, kObs), (QStringList{"1:primera", "2:segunda", "3:tercera", "4:", "5:", "6:cuarta"}));
        QCOMPARE(columna(sqlServer, kCliente), (QStringList{"1:12", "2:13", "3:14", "4:15", "5:15", "6:16"}));
        QCOMPARE(sqlServer, movimientos(Lado::Embebido, kChoque));
    }

    // Corrections in the console, saved together: an amount and a note, a
    // payment by typing the bank, a return to the client, another client.
    void correccionesEnLaConsola()
    {
        enAmbos(filasSinPagar(kConsola));
        QCOMPARE(movimientos(Lado::SqlServer, kConsola), movimientos(Lado::Embebido, kConsola));
        enCadaServidor([](SesionDePrueba& s, Lado) {
            Form2* p = consola(s, kConsola);
            QCOMPARE(p->Celdas.filas(), 4);
            escribirEnCelda(*p->GRID, filaDe(p, 1), 5, QStringLiteral("95.5"));
            escribirEnCelda(*p->GRID, filaDe(p, 1), 22, QStringLiteral("revisado por la señora Peña"), true);
            escribirEnFila(*p->GRID, filaDe(p, 2), {{9, "0134"}, {11, "REF-2031"}});
            escribirEnFila(*p->GRID, filaDe(p, 3), {{6, "3"}, {9, "7777"}});
            escribirEnCelda(*p->GRID, filaDe(p, 4), 2, QStringLiteral("15"));
            p->ACTUALIZAR->click();
            // The save reloads the day: nothing is left marked.
            for (int i : p->Celdas.Filas())
                QCOMPARE(p->Celdas.Value(i, 12).texto(), QString());
        });
        const QStringList sqlServer = movimientos(Lado::SqlServer, kConsola);
        QCOMPARE(columna(sqlServer, kBanco), (QStringList{"1:", "2:0134", "3:7777", "4:0134"}));
        QCOMPARE(columna(sqlServer, kObs), (QStringList{"1:revisado por la señora Peña", "2:URGENTE", "3:", "4:"}));
        QCOMPARE(columna(sqlServer, kCliente), (QStringList{"1:12", "2:13", "3:12", "4:15"}));
        QCOMPARE(sqlServer, movimientos(Lado::Embebido, kConsola));
    }

    // Three unpaid rows paid in one run through the payment dialog: the rows
    // take the provider, bank and reference, the moment of the client's clock,
    // and the provider's gift grows by its commission on what was received.
    void pagoEnLoteYRegaloDelProveedor()
    {
        const auto proveedor = [](Lado l) {
            return filas(l, QStringLiteral("proveedor"), QStringLiteral("C_proveedor = 3"), QStringLiteral("C_proveedor"));
        };
        const QStringList antes = proveedor(Lado::SqlServer);
        QCOMPARE(antes.size(), 1);
        QCOMPARE(proveedor(Lado::Embebido), antes);
        const QStringList campos = antes[0].split(QLatin1Char('|'));
        deshacer_ << std::pair{QStringLiteral("UPDATE proveedor SET regalo = %1, ultregalo = %2 WHERE C_proveedor = 3")
                                   .arg(exacto(QStringLiteral("regalo"), QStringLiteral("proveedor WHERE C_proveedor = 3")),
                                        exacto(QStringLiteral("ultregalo"), QStringLiteral("proveedor WHERE C_proveedor = 3"))),
                               QString()};
        enAmbos(filasSinPagar(kPago));

        enCadaServidor([](SesionDePrueba& s, Lado) {
            s.m->reloj = [] { return QDateTime(QDate(2031, 3, 7), QTime(10, 11, 12)); };
            Form2* p = consola(s, kPago);
            pagar(p, {1, 2, 3}, QStringLiteral("LOTE-2031"));
            QCOMPARE(p->Text5->text(), QStringLiteral("0"));
        });
        const QStringList sqlServer = movimientos(Lado::SqlServer, kPago);
        QCOMPARE(columna(sqlServer, kReferencia), (QStringList{"1:LOTE-2031", "2:LOTE-2031", "3:LOTE-2031", "4:R555"}));
        QCOMPARE(columna(sqlServer, kProveedor), (QStringList{"1:3", "2:3", "3:3", "4:3"}));
        QCOMPARE(columna(sqlServer, kFechaPago), (QStringList{"1:20310307", "2:20310307", "3:20310307", "4:20310101"}));
        QCOMPARE(sqlServer, movimientos(Lado::Embebido, kPago));

        // One run, one gift: the last one is the commission on what the three
        // rows received, to four decimals, and the balance grew by it.
        const QStringList despues = proveedor(Lado::SqlServer);
        QCOMPARE(proveedor(Lado::Embebido), despues);
        const QStringList nuevos = despues.value(0).split(QLatin1Char('|'));
        double recibido = 0;
        for (const QString& fila : sqlServer.mid(0, 3))
            recibido += fila.section(QLatin1Char('|'), kRecibido, kRecibido).toDouble();
        QVERIFY2(std::abs(nuevos.value(6).toDouble() - campos[4].toDouble() * recibido / 100) <= 0.00005 + 1e-9,
                 qPrintable(despues.value(0)));
        QCOMPARE(nuevos.value(5).toDouble(), campos[5].toDouble() + nuevos.value(6).toDouble());
    }

    // A delete by double click: a paid row stays without a question, an
    // unpaid one stays on a No and goes on a Yes.
    void borrado()
    {
        enAmbos(filasSinPagar(kBorrado));
        enCadaServidor([](SesionDePrueba& s, Lado) {
            Form2* p = consola(s, kBorrado);
            dobleClic(p, 4);
            QVERIFY(s.mensajes.isEmpty());
            for (int respuesta : {Mensajes::vbNo, Mensajes::vbYes}) {
                s.respuesta = respuesta;
                dobleClic(p, 2);
                QCOMPARE(s.mensajes.size(), respuesta == Mensajes::vbNo ? 1 : 2);
                QCOMPARE(p->Celdas.filas(), respuesta == Mensajes::vbNo ? 4 : 3);
            }
            s.mensajes.clear(); // the two questions, answered
        });
        const QStringList sqlServer = movimientos(Lado::SqlServer, kBorrado);
        QCOMPARE(columna(sqlServer, kCliente), (QStringList{"1:12", "3:12", "4:14"}));
        QCOMPARE(sqlServer, movimientos(Lado::Embebido, kBorrado));
    }

    // The batch entry: two lines, one of them two rows down with its client
    // picked from the list, numbered after the date's last sequence.
    void lote()
    {
        enAmbos(QStringLiteral("INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, operadora, tipo_servicio) "
                               "VALUES ('%1', 5, 12, 10, 9.5, '1', 1)")
                    .arg(ymd(kLote)));
        enCadaServidor([](SesionDePrueba& s, Lado) {
            auto* p = s.abrir<Form1>(QStringLiteral("Form1"));
            p->Fecha1->setDate(kLote);
            escribirEnFila(*p->GRID, 0, {{1, "12"}, {3, "100"}, {4, "94,3"}, {5, "3"}, {8, "z"}});
            escribirEnFila(*p->GRID, 2, {{1, "7"}, {3, "10129"}, {4, "2.44"}, {7, "NOELINA"}, {8, "M"}});
            p->INCLUIR->click();
            QCOMPARE(p->Celdas.Value(0, 1).texto(), QString());
        });
        const QStringList sqlServer = movimientos(Lado::SqlServer, kLote);
        QCOMPARE(columna(sqlServer, kCliente), (QStringList{"5:12", "6:12", "7:7"}));
        QCOMPARE(columna(sqlServer, kOperadora), (QStringList{"5:1", "6:1", "7:NOELI"}));
        QCOMPARE(sqlServer, movimientos(Lado::Embebido, kLote));
    }

    // The rate panel's "Actualizar Valores": the amounts of the calculation,
    // one corrected by hand, stored with the day's dollar. The moment of the
    // store is the server's clock (GETDATE), seconds apart between the two
    // runs: it is compared by its date.
    void panelDeTasas()
    {
        const auto servicios = [](Lado l) { return filas(l, QStringLiteral("servicios"), QStringLiteral("1 = 1"), QStringLiteral("C_SERVIcio")); };
        const auto parametros = [](Lado l) {
            QStringList r;
            for (const QString& f : filas(l, QStringLiteral("parametros"), QStringLiteral("1 = 1"), QStringLiteral("Clave"))) {
                QStringList c = f.split(QLatin1Char('|'));
                c[1] = c[1].left(10);
                r << c.join(QLatin1Char('|'));
            }
            return r;
        };
        QCOMPARE(servicios(Lado::SqlServer), servicios(Lado::Embebido));
        // Put back afterwards: every rate, and the dollar with its moment.
        for (const QString& f : servicios(Lado::Embebido)) {
            const QString codigo = f.section(QLatin1Char('|'), 0, 0);
            deshacer_ << std::pair{QStringLiteral("UPDATE servicios SET MONTO = %1 WHERE C_SERVIcio = %2")
                                       .arg(exacto(QStringLiteral("MONTO"), QStringLiteral("servicios WHERE C_SERVIcio = ") + codigo), codigo),
                                   QString()};
        }
        const QList<QStringList> parametro = servidor().filas(
            QStringLiteral("SELECT Dolar, CONVERT(varchar(19), Fecha, 126) FROM dbo.parametros"));
        QCOMPARE(parametro.size(), 1);
        const QString dolarAntes = exacto(QStringLiteral("Dolar"), QStringLiteral("parametros"));
        deshacer_ << std::pair{QStringLiteral("UPDATE parametros SET Dolar = %1, Fecha = '%2'").arg(dolarAntes, parametro[0][1]),
                               QStringLiteral("UPDATE parametros SET Dolar = %1, Fecha = '%2'")
                                   .arg(dolarAntes, servidor().gemelo().valor(QStringLiteral("select Fecha from parametros")))};

        enCadaServidor([](SesionDePrueba& s, Lado) {
            s.principal->entrada(QStringLiteral("PRECIO_DOLAR"))->trigger();
            QCoreApplication::processEvents();
            auto* p = static_cast<NEW_DOLAR*>(s.principal->Abierta(QStringLiteral("NEW_DOLAR")));
            QVERIFY(p);
            escribirEnCelda(*p->GRID1, 0, 2, QStringLiteral("401.2345"));
            p->CALCULOS->click();
            QCOMPARE(p->Celdas.Value(0, 1).texto(), QStringLiteral("TRUMIN"));
            escribirEnCelda(*p->GRID, 0, 4, QStringLiteral("45.5"));
            p->Procesar->click();
            QCOMPARE(s.m->Monto_T(1), 45.5f);
            QCOMPARE(s.m->Dolar_Param, 401.23f);
        });
        const QStringList sqlServer = servicios(Lado::SqlServer);
        QVERIFY(sqlServer.value(0).endsWith(QStringLiteral("|45.5")));
        QCOMPARE(sqlServer, servicios(Lado::Embebido));
        const QStringList estampa = parametros(Lado::SqlServer);
        QCOMPARE(estampa.value(0).section(QLatin1Char('|'), 1, 1), QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy")));
        QCOMPARE(estampa.value(0).section(QLatin1Char('|'), 3, 3), QStringLiteral("401.23"));
        QCOMPARE(estampa, parametros(Lado::Embebido));
    }

    // A new client from the catalogue, named with accents up to the field's
    // 40 characters, and a large photograph stored from its file and read back
    // byte for byte.
    void clienteNuevoConFoto()
    {
        const QString nombreCliente = QStringLiteral("MARÍA JOSÉ ÑÁÑEZ DE LA PEÑA Y SANTAMARÍA");
        QCOMPARE(nombreCliente.size(), 40);
        const QByteArray foto = fotoGrande();
        QVERIFY(foto.size() > 500000);
        QTemporaryDir carpeta;
        const QString ruta = carpeta.filePath(QStringLiteral("cédula y cara.png"));
        {
            QFile f(ruta);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(foto);
        }
        QStringList codigos;
        enCadaServidor([&](SesionDePrueba& s, Lado) {
            // A clock that moves a second at each look: the screen's notices
            // hold it still for two seconds.
            s.m->reloj = [ahora = QDateTime(QDate(2031, 3, 12), QTime(9, 0))]() mutable { return ahora = ahora.addSecs(1); };
            auto* p = s.abrir<Clientes>(QStringLiteral("Clientes"));
            p->INCLUIR->click();
            p->Text1[3]->setText(nombreCliente);
            p->Procesar->click();
            const int fila = p->N_Filas - 1;
            QCOMPARE(p->Celdas.Value(fila, 1).texto(), nombreCliente);
            const QString codigo = p->Celdas.Value(fila, 0).texto();
            codigos << codigo;
            QCOMPARE(s.m->Nombre_Cliente(int16_t(codigo.toInt())), nombreCliente);

            p->GRID->setBookmark(fila);
            emit p->GRID->Click();
            p->Dialogo_ShowOpen = [&ruta] { return ruta; };
            p->FOTO->click();
            p->GRABAR_IMAGEN->click();
            QCOMPARE(Foto::Lee(*s.m, codigo, false), Foto::Para_Grabar(foto));
        });
        QCOMPARE(codigos.size(), 2);
        QCOMPARE(codigos[0], codigos[1]);
        const QString cliente = QString::number(codigos[0].toInt());
        const auto deCliente = [&](Lado l) {
            return filas(l, QStringLiteral("clientes"), QStringLiteral("C_CLIENTE = ") + cliente, QStringLiteral("C_CLIENTE")) +
                   filas(l, QStringLiteral("fotos"), QStringLiteral("cliente = ") + cliente, QStringLiteral("cliente"));
        };
        const QStringList sqlServer = deCliente(Lado::SqlServer);
        QCOMPARE(sqlServer.size(), 2);
        QCOMPARE(sqlServer[0], cliente + QLatin1Char('|') + nombreCliente + QLatin1Char('|'));
        QCOMPARE(sqlServer, deCliente(Lado::Embebido));
    }

    void cleanupTestCase()
    {
        for (auto it = deshacer_.crbegin(); it != deshacer_.crend(); ++it)
            enAmbos(it->first, it->second.isEmpty() ? it->first : it->second);
        enAmbos(QStringLiteral("DELETE FROM MOVIMIENTOS WHERE FECHA LIKE '2031%'"));
        enAmbos(QStringLiteral("DELETE FROM fotos WHERE cliente > %1").arg(ultimoCliente_) + QStringLiteral(" AND cliente <> 9999"));
        enAmbos(QStringLiteral("DELETE FROM clientes WHERE C_CLIENTE > %1").arg(ultimoCliente_));
        // Both servers are back where the class found them.
        QList<QStringList> fin;
        for (const char* tabla : {"servicios", "proveedor", "parametros", "clientes", "fotos"}) {
            fin << servidor().tablaSqlServer(QLatin1String(tabla), QStringLiteral("1"));
            QCOMPARE(ServidorTsql::tablaEmbebida(servidor().gemelo().archivo(), QLatin1String(tabla), QStringLiteral("1")), fin.last());
        }
        QCOMPARE(fin, inicio_);
        QCOMPARE(movimientos(Lado::SqlServer, kPago), QStringList());
    }
};

REGISTRAR_PRUEBA(PruebaFlujos);
#include "tst_flujos.moc"
