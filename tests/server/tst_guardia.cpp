// The statement guard, which runs in the client before either server: the raw
// texts the program sends pass, anything else is refused as the server's own
// refusal before a server is reached (the same texts typed into the real
// screens: tests/app/tst_programa.cpp). Its attacks are tested here once, for
// both servers.
#include "cliente.h"
#include "fallo_esperado.h"
#include "guardia.h"
#include "prueba.h"
#include "sqlserver.h"

#include <algorithm>

namespace {

// The failure a text gets from the guard; empty when it passes.
QString rechazo(const QString& sql, bool consulta, int sentencias = 1)
{
    try {
        if (consulta)
            Guardia::consulta(sql);
        else
            Guardia::cambios(sql, sentencias);
        return {};
    } catch (const FalloEjecucion& f) {
        return f.numero() == kServidor ? f.texto() : QStringLiteral("otro fallo: ") + f.texto();
    }
}

QString alta(const QString& secuencia, const QString& obs = QStringLiteral("nota"))
{
    return QStringLiteral(" INSERT INTO MOVIMIENTOS VALUES ('20250310','%1','0012','10','9.5','0','0','','','0','1',2,'1',"
                          "0,'',0,0,'',100,'%2','9.5','9.5',0,'','',0,0,'B')")
        .arg(secuencia, obs);
}

// A console's save of one row with the common assignments, then the ones given.
QString guardado(const QString& secuencia, const QString& resto, const QString& nota = QStringLiteral("x"))
{
    return QStringLiteral(" UPDATE MOVIMIENTOS SET  recibido =  '9.5', enviado =  '10', C_CLIENTE =  '0012', obs =  '%2',"
                          " C_PROVEEDOR =  '0000', pago =  '0', C_BANCO =  '', operadora =  '1', REFERENCIA =  '',"
                          " confirmacion =  '0', tipo_operacion =  '2', ganancia =  '100',%3 tipo_servicio =  '1'"
                          " WHERE FECHA=  '20250310' and SECUENCIA = '%1'")
        .arg(secuencia, nota, resto);
}

const QString kGanancias = QStringLiteral(" g1 =  '9.5', g2 =  '9.5', g3 =  '0',");
const QString kPago = QStringLiteral(" fecha_pago =  '20250311', hora_pago =  '10:00:00', dolar1 =  '36.5', dolar2 =  '37',");
const QString kZelle = QStringLiteral(" bancozelle =  'B',");

// A text with parts of it replaced.
QString con(QString sql, std::initializer_list<std::pair<const char*, const char*>> cambios)
{
    for (const auto& [de, a] : cambios)
        sql.replace(QString::fromUtf8(de), QString::fromUtf8(a));
    return sql;
}

const char* const kSintaxis = "Incorrect syntax near|Unclosed quotation mark";
const char* const kConversion = "Conversion failed";

// Texts sent alike, each to be refused with one of the starts given ("" when
// it passes).
void comprobar(const char* esperado, bool consulta, const QStringList& textos, int sentencias = 1)
{
    const QStringList esperados = QString::fromLatin1(esperado).split(QLatin1Char('|'));
    for (const QString& sql : textos) {
        const QString r = rechazo(sql, consulta, sentencias);
        const bool bien = std::any_of(esperados.begin(), esperados.end(),
                                      [&](const QString& e) { return e.isEmpty() ? r.isEmpty() : r.startsWith(e); });
        QVERIFY2(bien, qPrintable(sql + QStringLiteral(" -> ") + (r.isEmpty() ? QStringLiteral("accepted") : r)));
    }
}

} // namespace

class PruebaGuardia : public QObject {
    Q_OBJECT
private slots:
    // The shapes the program sends pass, with the values a number column gets
    // from the screens in every form they take: thousands marks (dotted
    // twice), a returned row's empty gains, an unpaid row's empty bank, the
    // marks 7777 and 8888, signs, blanks and exponents, a date cell typed shorter.
    void formasDelPrograma()
    {
        const QString base = guardado("0001", kGanancias + kPago + kZelle);
        comprobar("", true,
                  {"SELECT FECHA=GETDATE()", " select * from dolar", " select * from dolar_NEW",
                   "select top 1 * from fotos where cliente = '0012'", "select  * from fotos where cliente = 9999",
                   "select top 1 * from fotos where cliente = ''"});
        for (const QString& resto : {QString(), kGanancias, kGanancias + kZelle, kGanancias + kPago + kZelle})
            comprobar("", false, {guardado("0001", resto) + guardado("0002", resto)}, 2);
        comprobar("", false, {alta("0001") + alta("0002") + alta("0003")}, 3);
        comprobar(
            "", false,
            {
                con(base, {{"'9.5'", "'1.234.50'"}, {"'10'", "' 10 '"}, {"g3 =  '0'", "g3 =  ''"}}),
                con(base,
                    {{"C_BANCO =  ''", "C_BANCO =  '7777'"}, {"g1 =  '9.5'", "g1 =  '-9.5'"}, {"g2 =  '9.5'", "g2 =  '+.5'"}}),
                con(base, {{"C_BANCO =  ''", "C_BANCO =  '8888'"}, {"bancozelle =  'B'", "bancozelle =  ''"}}),
                con(alta("0001"), {{"'10'", "'1.234.56'"}, {"'9.5','9.5',0", "'','',0"}}),
                " UPDATE proveedor SET  regalo = regalo +  ' 1.5', ultregalo =  ' 1.5' WHERE C_proveedor =  '3'",
                " UPDATE proveedor SET  regalo = regalo +  ' 1E-04', ultregalo =  ' 1E-04' WHERE C_proveedor =  '3'",
                " UPDATE proveedor SET  regalo = regalo -  '-2'  WHERE C_proveedor =  '0003'",
                " UPDATE proveedor SET  regalo = regalo -  ' 0'  WHERE C_proveedor =  '0000'",
                "delete movimientos where  fecha = '20250310' and secuencia =  0012",
                "delete movimientos where  fecha = '025/21/' and secuencia =  1",
            });
    }

    // The keys of the transactions a batch saves or deletes, as written, for
    // the check of their versions; new rows and a gift name none.
    void clavesDeLosCambios()
    {
        const auto claves = [](const QString& sql, int sentencias = 1) {
            QStringList r;
            for (const Guardia::Clave& c : Guardia::cambios(sql, sentencias))
                r << c.fecha + QLatin1Char('|') + c.secuencia;
            return r;
        };
        QCOMPARE(claves(guardado("0001", kGanancias) + guardado(" 2", kGanancias, "pagar WHERE FECHA = 1"), 2),
                 (QStringList {"20250310|0001", "20250310| 2"}));
        QCOMPARE(claves("delete movimientos where  fecha = '20250310' and secuencia =  -12"), QStringList {"20250310|-12"});
        QCOMPARE(claves(alta("0001") + alta("0002"), 2), QStringList());
        QCOMPARE(claves(" UPDATE proveedor SET  regalo = regalo -  '2'  WHERE C_proveedor =  '3'"), QStringList());
    }

    // Anything else: typed text closing a quote to add a statement, an
    // assignment or a condition; a text that is no number in a number column
    // or a key, as the servers refuse to convert it; what a server would read
    // otherwise than the guard; other reads.
    void todoLoDemasSeRechaza()
    {
        const QString base = guardado("0001", kGanancias + kZelle);
        const QString pagada = guardado("0001", kGanancias + kPago + kZelle);
        // Quotes typed into two values of a USDT console's save: the joining
        // text lands in a number column, or in the text columns that a longer
        // list has more (the Zelle bank's one character, the payment's date).
        const QString ganancia = QStringLiteral("100' , g1 = '1', g2 = '1', g3 = ");
        const QString servicio = QStringLiteral(" , tipo_servicio = '1");
        const QString dosValores = con(guardado("0001", QString()), {{"ganancia =  '100'", "ganancia =  '#1'"},
                                                                     {"tipo_servicio =  '1'", "tipo_servicio =  '#2'"}});
        // A note that closes the save of one row and saves another, or closes
        // a new transaction and enters another: only the count shows it.
        const auto partes = [](const QString& sql) { return std::pair {sql.section('#', 0, 0), sql.section('#', 1)}; };
        const auto [antes1, despues1] = partes(guardado("0001", QString(), "#"));
        const auto [antes2, despues2] = partes(guardado("0002", QString(), "#"));
        const QString otraFila = guardado("0002", QString(), "x" + despues1 + antes2 + "y");
        const auto [antesAlta, despuesAlta] = partes(alta("0099", "#"));
        const QString otraAlta = alta("0001", "x" + despuesAlta + antesAlta + "y");
        comprobar(
            kSintaxis, false,
            {
                alta("0001", "x','1','1',0,'','',0,0,'0') DELETE MOVIMIENTOS WHERE 1=1 OR obs IN ('"),
                guardado("0001", kGanancias + kZelle, "x' WHERE 1=1 UPDATE MOVIMIENTOS SET obs = 'x"),
                guardado("0001", kGanancias + kZelle, "x', pago = '0"), // an assignment added
                con(base, {{"tipo_servicio =  '1'", "tipo_servicio =  '1', FECHA = '1'"}}),
                base + " OR 1=1",
                con(base, {{"and SECUENCIA", "or SECUENCIA"}}),
                con(base, {{"SECUENCIA = '0001'", "SECUENCIA = SECUENCIA"}}),
                con(base, {{"obs =  'x'", "obs =  obs"}}),
                con(base, {{"obs =  'x'", "obs =  (SELECT 'x')"}}),
                " UPDATE MOVIMIENTOS SET obs = 'x' WHERE FECHA = '20250310' and SECUENCIA = '1'",
                "delete movimientos where  fecha = '20250310' and secuencia =  1 or 1 = 1",
                "delete movimientos where  fecha = '20250310'",
                "delete from movimientos where  fecha = '20250310' and secuencia =  1",
                "delete movimientos where  fecha = '1' and secuencia =  1 delete movimientos where  fecha = '1' and secuencia =  2",
                " UPDATE proveedor SET regalo = 0 WHERE C_proveedor = 1",
                " UPDATE proveedor SET  regalo = regalo -  '1'  WHERE C_proveedor =  '3' or 1 = 1",
                " UPDATE proveedor SET  regalo = regalo -  '1'  WHERE C_proveedor =  '3'"
                " UPDATE proveedor SET  regalo = regalo -  '1'  WHERE C_proveedor =  '4'",
                alta("0001") + base, // a batch of two kinds
                con(alta("0001"), {{",'B')", ")"}}),
                con(alta("0001"), {{",'B')", ",'B','C')"}}), // 27 and 29 values
                " INSERT INTO clientes VALUES (1, 'x', '')",
                " INSERT INTO MOVIMIENTOS (FECHA) VALUES ('1')",
                "DROP TABLE MOVIMIENTOS",
                "",
                // what the server would read otherwise than the guard
                con(base, {{"'0012'", "'0012' -- '"}}),
                con(base, {{"'0012'", "'0012' /* '"}}),
                base + ";",
                base + "; DROP TABLE MOVIMIENTOS",
                con(base, {{"MOVIMIENTOS", "[MOVIMIENTOS]"}}),
                con(base, {{"'0012'", "N'0012'"}}),
                con(base, {{"SET", "S\u0395T"}}), // a Greek capital epsilon
                con(base, {{" WHERE", "\u00a0WHERE"}}),
                QString(base).replace("obs =  'x'", QStringLiteral("obs =  'x") + QChar(0) + QStringLiteral("y'")),
            });
        comprobar(kSintaxis, true,
                  {
                      "select * from MOVIMIENTOS",
                      "select * from fotos",
                      "select * from fotos where cliente = 1 or 1 = 1",
                      "select top 1 * from dolar",
                      "select * from dolar where 1 = 1",
                      "SELECT FECHA=GETDATE(), 1",
                      "SELECT FECHA=GETDATE(); DELETE MOVIMIENTOS",
                      "select img from fotos where cliente = 1",
                      "select * from fotos where cliente = 1 union select * from fotos where cliente = 2",
                  });
        // A whole statement of the same kind typed into a value: the shape of
        // a batch of two, where the screen built one.
        comprobar("", false, {otraFila, otraAlta}, 2);
        comprobar("Incorrect syntax near", false, {otraFila, otraAlta});
        comprobar("Incorrect syntax near", false, {alta("0001") + alta("0002")}, 3);
        // Numbers and keys; the date is always quoted.
        comprobar(kConversion, false,
                  {
                      con(pagada, {{"C_PROVEEDOR =  '0000'", "C_PROVEEDOR =  '3 OR 1=1'"}}),
                      con(pagada, {{"SECUENCIA = '0001'", "SECUENCIA = '1 or 1'"}}),
                      con(pagada, {{"FECHA=  '20250310'", "FECHA=  '2025031O'"}}),
                      con(pagada, {{"'9.5'", "'9,5'"}}), // the screens send the point
                      con(pagada, {{"'10:00:00'", "'10:00 x'"}}),
                      con(alta("0001"), {{"'0012'", "'12x'"}}),
                      con(alta("0001"), {{"('20250310'", "('2025-03-10'"}}),
                      // the joining text between a note's quote and a reference's lands in the provider's code
                      con(base, {{"obs =  'x'", "obs =  'x' , C_PROVEEDOR ='"}, {"REFERENCIA =  ''", "REFERENCIA =  '' y'"}}),
                      " UPDATE proveedor SET  regalo = regalo -  'x'  WHERE C_proveedor =  '3'",
                      " UPDATE proveedor SET  regalo = regalo -  '1'  WHERE C_proveedor =  '3 or 1=1'",
                      "delete movimientos where  fecha = '20250310' and secuencia =  '1 or 1'",
                      QString(dosValores).replace("#1", ganancia).replace("#2", servicio),
                      QString(dosValores)
                          .replace("#1", ganancia + "'0', fecha_pago = ")
                          .replace("#2", ", hora_pago = '1', dolar1 = '1', dolar2 = '1', bancozelle = '1', tipo_servicio = '1"),
                  });
        comprobar(kConversion, true, {"select top 1 * from fotos where cliente = '1 or 1=1'"});
        comprobar("Incorrect syntax", false, {con(pagada, {{"FECHA=  '20250310'", "FECHA=  20250310"}})});
        QCOMPARE(rechazo(QString(dosValores).replace("#1", ganancia + "'0', bancozelle = ").replace("#2", servicio), false),
                 QStringLiteral("String or binary data would be truncated."));
        // The refusal names where the text stops being the program's.
        QCOMPARE(rechazo(guardado("0001", kGanancias + kZelle, "x' WHERE 1=1 UPDATE MOVIMIENTOS SET obs = 'x"), false),
                 QStringLiteral("Incorrect syntax near 'WHERE'."));
    }

    // SQL Server gets a raw text only through the guard: refused here, the
    // text never leaves the machine (no server is needed to see it).
    void sqlServerTambien()
    {
        ServidorSqlServer servidor(DatosSqlServer {});
        ESPERAR_FALLO(servidor.ejecutar(" UPDATE MOVIMIENTOS SET obs = 'x' WHERE 1=1"), kServidor, "Incorrect syntax near");
        ESPERAR_FALLO(servidor.abrirConsulta("select * from MOVIMIENTOS"), kServidor, "Incorrect syntax near");
        // What the program sends gets as far as the connection, which is closed.
        ESPERAR_FALLO(servidor.abrirConsulta("SELECT FECHA=GETDATE()"), FalloEjecucion::objetoCerrado().numero(), "");
    }

    // A text that SQL Server's code page cannot hold is refused, for either
    // server, before anything is written, naming the character; the letters
    // and signs of Windows-1252 pass, in a raw value and in a procedure's
    // (the one command of the program calls both servers' procedures), and a
    // procedure's text loses its control characters.
    void textosQueLaBaseNoPuedeGuardar()
    {
        const QString windows = QStringLiteral("áéíóúüñÑ¿¡ºª°±×÷ÿ €‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ");
        QCOMPARE(rechazo(guardado("0001", kGanancias + kZelle, windows), false), QString());
        QCOMPARE(rechazo(alta("0001", windows), false), QString());
        const auto nombra = [](const QString& caracter) {
            return QStringLiteral("tiene el carácter '%1', que la base de datos no puede guardar.").arg(caracter);
        };
        // Turkish and Chinese letters, a sign beyond the plane (two UTF-16
        // units, named as one), Latin Extended, and a C1 control code that
        // Windows-1252 leaves undefined.
        for (const QString& caracter :
             {QStringLiteral("ğ"), QStringLiteral("漢"), QStringLiteral("😀"), QStringLiteral("Ā"), QString(QChar(0x81))}) {
            const QString nota = QStringLiteral("Öz") + caracter + QStringLiteral("ür");
            QCOMPARE(rechazo(guardado("0001", kGanancias + kZelle, nota), false),
                     QStringLiteral("El texto \"%1\" ").arg(nota) + nombra(caracter));
            QVERIFY(rechazo(alta("0001") + alta("0002", nota), false, 2).endsWith(nombra(caracter)));
        }

        BaseTemporal base;
        Cliente c(base);
        c.comando.CommandText = QStringLiteral("TRU_IN_CLIENTES_01");
        for (const QString& nombre : {QStringLiteral("LI 漢"), QStringLiteral("AYŞE YILMAZ")}) {
            c.comando.Parameters(1) = Valor(nombre);
            ESPERAR_FALLO(c.comando.Execute(), kServidor, "no puede guardar");
        }
        QCOMPARE(base.valor("select count(*) from clientes"), QStringLiteral("0"));
        // Control characters are dropped: a NUL no longer cuts a client's name.
        for (const QString& nombre :
             {QStringLiteral("PEÑA “EL GÜERO” €"), QStringLiteral("ANA") + QChar(0) + QStringLiteral("MARIA\x01 DIAZ")}) {
            c.comando.Parameters(1) = Valor(nombre);
            c.comando.Execute();
        }
        QCOMPARE(base.valor("select group_concat(D_cliente, '|') from (select D_cliente from clientes order by C_CLIENTE)"),
                 QStringLiteral("PEÑA “EL GÜERO” €|ANAMARIA DIAZ"));
    }
};

REGISTRAR_PRUEBA(PruebaGuardia);
#include "tst_guardia.moc"
