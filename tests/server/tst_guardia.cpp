// The statement guard: the raw texts the program sends pass, anything else is
// refused as a broken statement before it reaches either server (the same
// texts typed into the real screens: tests/app/tst_programa.cpp).
#include "cliente.h"
#include "fallo_esperado.h"
#include "guardia.h"
#include "prueba.h"
#include "sqlserver.h"

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

} // namespace

class PruebaGuardia : public QObject {
    Q_OBJECT
private slots:
    // The shapes that no test of a screen sends yet: the rate screens' reads,
    // the second entry screen's batch, each console's list of assignments.
    void formasDelPrograma()
    {
        for (const char* sql : {"SELECT FECHA=GETDATE()", " select * from dolar", " select * from dolar_NEW",
                                "select top 1 * from fotos where cliente = '0012'", "select  * from fotos where cliente = 9999"})
            QCOMPARE(rechazo(QString::fromLatin1(sql), true), QString());
        QCOMPARE(rechazo(alta("0001") + alta("0002") + alta("0003"), false, 3), QString());
        for (const QString& resto : {QString(), kGanancias, kGanancias + kZelle, kGanancias + kPago + kZelle})
            QCOMPARE(rechazo(guardado("0001", resto) + guardado("0002", resto), false, 2), QString());
        QCOMPARE(rechazo(" UPDATE proveedor SET  regalo = regalo +  ' 1.5', ultregalo =  ' 1.5' WHERE C_proveedor =  '3'", false), QString());
        QCOMPARE(rechazo(" UPDATE proveedor SET  regalo = regalo -  '-2'  WHERE C_proveedor =  '0003'", false), QString());
        QCOMPARE(rechazo("delete movimientos where  fecha = '20250310' and secuencia =  0012", false), QString());
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
                 (QStringList{"20250310|0001", "20250310| 2"}));
        QCOMPARE(claves("delete movimientos where  fecha = '20250310' and secuencia =  -12"), QStringList{"20250310|-12"});
        QCOMPARE(claves(alta("0001") + alta("0002"), 2), QStringList());
        QCOMPARE(claves(" UPDATE proveedor SET  regalo = regalo -  '2'  WHERE C_proveedor =  '3'"), QStringList());
    }

    // The values a number column gets from the screens, in every form they
    // take, pass; a text that is no number is refused in a number column and
    // in a key, as the servers refuse to convert it.
    void numerosEnSuSitio()
    {
        const auto conValores = [](const QString& sql, std::initializer_list<std::pair<const char*, const char*>> cambios) {
            QString r = sql;
            for (const auto& [de, a] : cambios)
                r.replace(QString::fromUtf8(de), QString::fromUtf8(a));
            return r;
        };
        const QString base = guardado("0001", kGanancias + kPago + kZelle);
        // amounts with thousands marks (dotted twice), a returned row's empty
        // gains, an unpaid row's empty bank, the marks 7777 and 8888, signs,
        // blanks and exponents
        for (const QString& sql :
             {conValores(base, {{"'9.5'", "'1.234.50'"}, {"'10'", "' 10 '"}, {"g3 =  '0'", "g3 =  ''"}}),
              conValores(base, {{"C_BANCO =  ''", "C_BANCO =  '7777'"}, {"g1 =  '9.5'", "g1 =  '-9.5'"}, {"g2 =  '9.5'", "g2 =  '+.5'"}}),
              conValores(base, {{"C_BANCO =  ''", "C_BANCO =  '8888'"}, {"bancozelle =  'B'", "bancozelle =  ''"}}),
              conValores(alta("0001"), {{"'10'", "'1.234.56'"}, {"'9.5','9.5',0", "'','',0"}}),
              QStringLiteral(" UPDATE proveedor SET  regalo = regalo +  ' 1E-04', ultregalo =  ' 1E-04' WHERE C_proveedor =  '3'"),
              QStringLiteral(" UPDATE proveedor SET  regalo = regalo -  ' 0'  WHERE C_proveedor =  '0000'")})
            QVERIFY2(rechazo(sql, false).isEmpty(), qPrintable(sql + " -> " + rechazo(sql, false)));
        QCOMPARE(rechazo("select top 1 * from fotos where cliente = ''", true), QString());
        // A date cell typed shorter than dd/mm/yyyy, taken apart by position.
        QCOMPARE(rechazo("delete movimientos where  fecha = '025/21/' and secuencia =  1", false), QString());

        const QString conversion = QStringLiteral("Conversion failed");
        for (const QString& sql : {
                 conValores(base, {{"C_PROVEEDOR =  '0000'", "C_PROVEEDOR =  '3 OR 1=1'"}}),
                 conValores(base, {{"SECUENCIA = '0001'", "SECUENCIA = '1 or 1'"}}),
                 conValores(base, {{"FECHA=  '20250310'", "FECHA=  '2025031O'"}}),
                 conValores(base, {{"'9.5'", "'9,5'"}}), // the screens send the point
                 conValores(alta("0001"), {{"'0012'", "'12x'"}}),
                 conValores(alta("0001"), {{"('20250310'", "('2025-03-10'"}}),
                 QStringLiteral(" UPDATE proveedor SET  regalo = regalo -  'x'  WHERE C_proveedor =  '3'"),
                 QStringLiteral(" UPDATE proveedor SET  regalo = regalo -  '1'  WHERE C_proveedor =  '3 or 1=1'"),
                 QStringLiteral("delete movimientos where  fecha = '20250310' and secuencia =  '1 or 1'"),
             })
            QVERIFY2(rechazo(sql, false).startsWith(conversion), qPrintable(sql + " -> " + rechazo(sql, false)));
        QVERIFY(rechazo("select top 1 * from fotos where cliente = '1 or 1=1'", true).startsWith(conversion));
        // The date is the quoted text the screens send, never a bare number.
        QVERIFY(rechazo(conValores(base, {{"FECHA=  '20250310'", "FECHA=  20250310"}}), false).startsWith("Incorrect syntax"));

        // Quotes typed into two values of a USDT console's save assign the gains
        // that console never writes; the joining text lands in a number column.
        const QString ganancia = QStringLiteral("100' , g1 = '1', g2 = '1', g3 = ");
        const QString servicio = QStringLiteral(" , tipo_servicio = '1");
        const QString tresGanancias = conValores(
            guardado("0001", QString()), {{"ganancia =  '100'", "ganancia =  '#1'"}, {"tipo_servicio =  '1'", "tipo_servicio =  '#2'"}});
        const QString inyectada = QString(tresGanancias).replace("#1", ganancia).replace("#2", servicio);
        QVERIFY2(rechazo(inyectada, false).startsWith(conversion), qPrintable(inyectada + " -> " + rechazo(inyectada, false)));
        // Nor does it fit the text columns that a longer list has more: the
        // Zelle bank's one character, the payment's date and time.
        const QString enTexto = QString(tresGanancias).replace("#1", ganancia + "'0', bancozelle = ").replace("#2", servicio);
        QCOMPARE(rechazo(enTexto, false), QStringLiteral("String or binary data would be truncated."));
        const QString enFecha = QString(tresGanancias)
                                    .replace("#1", ganancia + "'0', fecha_pago = ")
                                    .replace("#2", ", hora_pago = '1', dolar1 = '1', dolar2 = '1', bancozelle = '1', tipo_servicio = '1");
        QVERIFY2(rechazo(enFecha, false).startsWith(conversion), qPrintable(enFecha + " -> " + rechazo(enFecha, false)));
        QVERIFY(rechazo(QString(base).replace("'10:00:00'", "'10:00 x'"), false).startsWith(conversion));
    }

    void todoLoDemasSeRechaza()
    {
        const QString base = guardado("0001", kGanancias + kZelle);
        const std::pair<QString, bool> casos[] = {
            // typed text closing the quote and adding a statement or a condition
            {alta("0001", "x','1','1',0,'','',0,0,'0') DELETE MOVIMIENTOS WHERE 1=1 OR obs IN ('"), false},
            {guardado("0001", kGanancias + kZelle, "x' WHERE 1=1 UPDATE MOVIMIENTOS SET obs = 'x"), false},
            {guardado("0001", kGanancias + kZelle, "x', pago = '0"), false}, // an assignment added
            {QString(base).replace("tipo_servicio =  '1'", "tipo_servicio =  '1', FECHA = '1'"), false},
            {base + " OR 1=1", false},
            {QString(base).replace("and SECUENCIA", "or SECUENCIA"), false},
            {QString(base).replace("SECUENCIA = '0001'", "SECUENCIA = SECUENCIA"), false},
            {QString(base).replace("obs =  'x'", "obs =  obs"), false},
            {QString(base).replace("obs =  'x'", "obs =  (SELECT 'x')"), false},
            {" UPDATE MOVIMIENTOS SET obs = 'x' WHERE FECHA = '20250310' and SECUENCIA = '1'", false},
            {"delete movimientos where  fecha = '20250310' and secuencia =  1 or 1 = 1", false},
            {"delete movimientos where  fecha = '20250310'", false},
            {"delete from movimientos where  fecha = '20250310' and secuencia =  1", false},
            {"delete movimientos where  fecha = '1' and secuencia =  1 delete movimientos where  fecha = '1' and secuencia =  2", false},
            {" UPDATE proveedor SET regalo = 0 WHERE C_proveedor = 1", false},
            {" UPDATE proveedor SET  regalo = regalo -  '1'  WHERE C_proveedor =  '3' or 1 = 1", false},
            {" UPDATE proveedor SET  regalo = regalo -  '1'  WHERE C_proveedor =  '3'"
             " UPDATE proveedor SET  regalo = regalo -  '1'  WHERE C_proveedor =  '4'", false},
            {alta("0001") + base, false}, // a batch of two kinds
            {QString(alta("0001")).replace(",'B')", ")"), false},  // 27 values
            {QString(alta("0001")).replace(",'B')", ",'B','C')"), false},
            {" INSERT INTO clientes VALUES (1, 'x', '')", false},
            {" INSERT INTO MOVIMIENTOS (FECHA) VALUES ('1')", false},
            {"DROP TABLE MOVIMIENTOS", false},
            {"", false},
            // what the server would read otherwise than the guard
            {QString(base).replace("'0012'", "'0012' -- '"), false},
            {QString(base).replace("'0012'", "'0012' /* '"), false},
            {base + ";", false},
            {QString(base).replace("MOVIMIENTOS", "[MOVIMIENTOS]"), false},
            {QString(base).replace("'0012'", "N'0012'"), false},
            {QString(base).replace("SET", QString::fromUtf8("S\u0395T")), false}, // a Greek capital epsilon
            {QString(base).replace(" WHERE", QString::fromUtf8("\u00a0WHERE")), false},
            {QString(base).replace("obs =  'x'", QStringLiteral("obs =  'x") + QChar(0) + QStringLiteral("y'")), false},
            // reads
            {"select * from MOVIMIENTOS", true},
            {"select * from fotos", true},
            {"select * from fotos where cliente = 1 or 1 = 1", true},
            {"select top 1 * from dolar", true},
            {"select * from dolar where 1 = 1", true},
            {"SELECT FECHA=GETDATE(), 1", true},
            {"select img from fotos where cliente = 1", true},
            {"select * from fotos where cliente = 1 union select * from fotos where cliente = 2", true},
        };
        for (const auto& [sql, consulta] : casos) {
            const QString r = rechazo(sql, consulta);
            QVERIFY2(r.startsWith("Incorrect syntax near") || r.startsWith("Unclosed quotation mark"),
                     qPrintable(sql + " -> " + (r.isEmpty() ? QStringLiteral("accepted") : r)));
        }
        // A whole statement of the same kind typed into a value reads as a
        // well-formed batch: only the count of statements the screen built
        // shows it. A note closing the save of one row and saving another:
        const auto partes = [](const QString& sql) { return std::pair{sql.section('#', 0, 0), sql.section('#', 1)}; };
        const auto [antes1, despues1] = partes(guardado("0001", QString(), "#"));
        const auto [antes2, despues2] = partes(guardado("0002", QString(), "#"));
        const QString otraFila = guardado("0002", QString(), "x" + despues1 + antes2 + "y");
        QCOMPARE(rechazo(otraFila, false, 2), QString()); // the shape of a two-row save...
        QVERIFY(rechazo(otraFila, false).startsWith("Incorrect syntax near")); // ...where the screen built one
        // An observation closing the new transaction and entering another:
        const auto [antesAlta, despuesAlta] = partes(alta("0099", "#"));
        const QString otraAlta = alta("0001", "x" + despuesAlta + antesAlta + "y");
        QCOMPARE(rechazo(otraAlta, false, 2), QString());
        QVERIFY(rechazo(otraAlta, false).startsWith("Incorrect syntax near"));
        QVERIFY(rechazo(alta("0001") + alta("0002"), false, 3).startsWith("Incorrect syntax near"));
        // The refusal names where the text stops being the program's.
        QCOMPARE(rechazo(guardado("0001", kGanancias + kZelle, "x' WHERE 1=1 UPDATE MOVIMIENTOS SET obs = 'x"), false),
                 QStringLiteral("Incorrect syntax near 'WHERE'."));
    }

    // SQL Server gets a raw text only through the guard: refused here, the
    // text never leaves the machine (no server is needed to see it).
    void sqlServerTambien()
    {
        ServidorSqlServer servidor(DatosSqlServer{});
        ESPERAR_FALLO(servidor.ejecutar(" UPDATE MOVIMIENTOS SET obs = 'x' WHERE 1=1"), kServidor, "Incorrect syntax near");
        ESPERAR_FALLO(servidor.abrirConsulta("select * from MOVIMIENTOS"), kServidor, "Incorrect syntax near");
        // What the program sends gets as far as the connection, which is closed.
        ESPERAR_FALLO(servidor.abrirConsulta("SELECT FECHA=GETDATE()"), FalloEjecucion::objetoCerrado().numero(), "");
    }

    // A text that SQL Server's code page cannot hold is refused on either
    // server before anything is written, naming the character; the letters
    // and signs of Windows-1252 pass, in a raw value and in a procedure's, and
    // a procedure's text loses its control characters.
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
        for (const QString& caracter : {QStringLiteral("ğ"), QStringLiteral("漢"), QStringLiteral("😀"), QStringLiteral("Ā"),
                                        QString(QChar(0x81))}) {
            const QString nota = QStringLiteral("Öz") + caracter + QStringLiteral("ür");
            QCOMPARE(rechazo(guardado("0001", kGanancias + kZelle, nota), false),
                     QStringLiteral("El texto \"%1\" ").arg(nota) + nombra(caracter));
            QVERIFY(rechazo(alta("0001") + alta("0002", nota), false, 2).endsWith(nombra(caracter)));
        }

        // A procedure's text: refused before the call; a Windows-1252 one is kept.
        BaseTemporal base;
        Cliente c(base);
        c.comando.CommandText = QStringLiteral("TRU_IN_CLIENTES_01");
        c.comando.Parameters(1) = Valor(QStringLiteral("LI 漢"));
        ESPERAR_FALLO(c.comando.Execute(), kServidor, "no puede guardar");
        QCOMPARE(base.valor("select count(*) from clientes"), QStringLiteral("0"));
        // Control characters are dropped: a NUL no longer cuts a client's name.
        for (const QString& nombre : {QStringLiteral("PEÑA “EL GÜERO” €"), QStringLiteral("ANA") + QChar(0) + QStringLiteral("MARIA\x01 DIAZ")}) {
            c.comando.Parameters(1) = Valor(nombre);
            c.comando.Execute();
        }
        QCOMPARE(base.valor("select group_concat(D_cliente, '|') from (select D_cliente from clientes order by C_CLIENTE)"), QStringLiteral("PEÑA “EL GÜERO” €|ANAMARIA DIAZ"));
    }
};

REGISTRAR_PRUEBA(PruebaGuardia);
#include "tst_guardia.moc"
