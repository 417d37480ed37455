// The embedded server through the client's own access layer: procedures with
// positional values, the raw statements of the client, and two clients on one file.
#include "cliente.h"
#include "fallo_esperado.h"
#include "prueba.h"
#include "revision.h"

#include <QDir>
#include <QProcess>
#include <atomic>
#include <cmath>
#include <thread>

namespace {

// The text that the entry screen sends for a new transaction.
QString insertarMovimiento(const QString& fecha, const QString& secuencia, const QString& obs = QStringLiteral("nota"))
{
    return QStringLiteral(" INSERT INTO MOVIMIENTOS VALUES ('%1','%2','0012','100.5','95.25','0','0','','','0','1',2,'01',"
                          "0,'',0,0,'',100,'%3','95.25','95.25',0,'','',0,0,'B')")
        .arg(fecha, secuencia, obs);
}

// The text that the consoles send to save one row.
QString actualizarMovimiento(const QString& fecha, const QString& secuencia, const QString& obs, const QString& pago)
{
    return QStringLiteral(" UPDATE MOVIMIENTOS SET  recibido =  '95.25', enviado =  '100.5', C_CLIENTE =  '0012', obs =  '%3',"
                          " C_PROVEEDOR =  '0003', pago =  '%4', C_BANCO =  '', operadora =  '1', REFERENCIA =  '',"
                          " confirmacion =  '0', tipo_operacion =  '2', ganancia =  '100', g1 =  '95.25', g2 =  '95.25',"
                          " g3 =  '0', bancozelle =  'B', tipo_servicio =  '01' WHERE FECHA=  '%1' and SECUENCIA = '%2'")
        .arg(fecha, secuencia, obs, pago);
}

} // namespace

// How QCOMPARE shows a value that differs.
char* toString(const Valor& v)
{
    const char* clase = v.esNulo() ? "null" : v.esEntero() ? "int" : v.esReal() ? "real" : v.esTexto() ? "text" : "other";
    return QTest::toString(QStringLiteral("%1 %2").arg(QLatin1String(clase), v.aTexto()));
}

class PruebaEmbebido : public QObject {
    Q_OBJECT

private slots:
    void formasDeLasSentencias()
    {
        const auto una = [](const char* sql, bool consulta) {
            return ServidorEmbebido::adaptar(QString::fromUtf8(sql), consulta);
        };
        const std::tuple<const char*, bool, const char*> casos[] = {
            {"SELECT FECHA=GETDATE()", true, "SELECT GETDATE() AS FECHA"},
            {"  select  fecha = getdate ( ) ", true, "SELECT GETDATE() AS fecha"},
            {"select top 1 * from fotos where cliente = '0012'", true, "select * from fotos where cliente = '0012' LIMIT 1"},
            {"select  * from fotos where cliente = 0", true, "select  * from fotos where cliente = 0"},
            {" select * from dolar_NEW", true, "select * from dolar_NEW"},
            {"delete movimientos where  fecha = '20241225' and secuencia =  0005", false,
             "delete from movimientos where  fecha = '20241225' and secuencia =  0005"},
            {"DELETE FROM movimientos WHERE fecha = '1'", false, "DELETE FROM movimientos WHERE fecha = '1'"},
            // an empty text inside a condition is no value to convert
            {"UPDATE proveedor SET regalo = '' WHERE C_proveedor = ''", false,
             "UPDATE proveedor SET regalo = '' WHERE C_proveedor = ''"},
        };
        for (const auto& [sql, consulta, esperada] : casos)
            QCOMPARE(una(sql, consulta), QStringList {QString::fromUtf8(esperada)});

        // A batch is cut at each statement, not at the words inside the quotes.
        const QString lote = actualizarMovimiento("20241225", "0005", "update pending, delete later", "10") +
                             actualizarMovimiento("20241225", "0006", "x", "20") +
                             " UPDATE proveedor SET  regalo = regalo +  '12.5', ultregalo =  '12.5' WHERE C_proveedor =  '3'" +
                             insertarMovimiento("20241226", "0001");
        const QStringList partes = ServidorEmbebido::adaptar(lote, false);
        QCOMPARE(partes.size(), 4);
        QVERIFY(partes[0].startsWith("UPDATE MOVIMIENTOS SET") && partes[0].endsWith("SECUENCIA = '0005'"));
        QVERIFY(partes[0].contains("'update pending, delete later'"));
        QCOMPARE(partes[2],
                 QString("UPDATE proveedor SET  regalo = regalo +  '12.5', ultregalo =  '12.5' WHERE C_proveedor =  '3'"));
        QVERIFY(partes[3].startsWith("INSERT INTO MOVIMIENTOS VALUES ('20241226'"));
    }

    void sentenciasRechazadas()
    {
        const char* consultas[] = {
            "DROP TABLE fotos",
            "select * from fotos; drop table fotos",
            "select * from fotos -- x",
            "select * from fotos where cliente = (select 1)",
            "select load_extension('x') from fotos",
            "select * from fotos where cliente = '12",
            "PRAGMA journal_mode=DELETE",
            "select * from fotos order by img",
            "UPDATE proveedor SET regalo = 0 WHERE C_proveedor = 1",
            "select * from a, b",
            "",
        };
        for (const char* sql : consultas)
            ESPERAR_FALLO(ServidorEmbebido::adaptar(QString::fromUtf8(sql), true), kServidor, "");
        const char* cambios[] = {
            "select * from fotos",
            "CREATE TABLE x (a)",
            "ATTACH DATABASE 'x' AS y",
            "UPDATE proveedor SET regalo = 0", // every row at once is no statement of the client
            "UPDATE proveedor SET regalo = abs(1) WHERE C_proveedor = 1",
            "delete fotos",
            "INSERT INTO MOVIMIENTOS SELECT * FROM MOVIMIENTOS",
            "UPDATE proveedor SET regalo = 0 WHERE 1 = 1; DROP TABLE fotos",
            "INSERT INTO fotos VALUES (1, x'00')",
            "UPDATE [proveedor] SET regalo = 0 WHERE C_proveedor = 1",
        };
        for (const char* sql : cambios)
            ESPERAR_FALLO(ServidorEmbebido::adaptar(QString::fromUtf8(sql), false), kServidor, "");
        ESPERAR_FALLO(ServidorEmbebido::adaptar("select * from fotos where obs = 'it's'", true), kServidor,
                      "Unclosed quotation mark");
        ESPERAR_FALLO(ServidorEmbebido::adaptar("CREATE TABLE x (a)", false), kServidor, "Incorrect syntax near 'CREATE'");

        // The refusal reaches the client as the server's failure, through both entries.
        BaseTemporal base;
        Cliente c(base);
        ESPERAR_FALLO(c.conexion.Execute("DROP TABLE fotos"), kServidor, "Incorrect syntax");
        ESPERAR_FALLO(c.abrir("select * from fotos; select 1"), kServidor, "Incorrect syntax");
        QCOMPARE(base.valor("select count(*) from fotos"), QString("2")); // the table is still there, with its two pictures
    }

    void valoresPorPosicion()
    {
        BaseTemporal base;
        Cliente c(base);
        const char* cuerpo = "-- the values back, to see what was bound\n"
                             "--@param @codigo INTEGER\n"
                             "--@param @nombre TEXT = 'sin nombre'\n"
                             "--@param @monto REAL = 1.5\n"
                             "--@param @nota TEXT = NULL  -- remarks after the line are allowed\n"
                             "SELECT @CODIGO AS C_SERVIcio, @nombre AS Nombre, @monto AS monto, @nota AS nota;";
        const auto fila = [](Recordset rs) {
            QStringList r;
            for (const char* campo : {"c_servicio", "Nombre", "monto", "nota"})
                r << (rs.Fields(campo).esNulo() ? QStringLiteral("(null)") : rs.Fields(campo).aTexto());
            return r;
        };
        QCOMPARE(fila(c.texto(cuerpo, {Valor(7)})), QStringList({"7", "sin nombre", "1,5", "(null)"}));
        // An unset value in the middle takes its default; a null value stays null;
        // trailing unset values are not sent at all.
        QCOMPARE(fila(c.texto(cuerpo, {Valor(8), std::nullopt, Valor(), Valor("x"), std::nullopt, std::nullopt})),
                 QStringList({"8", "sin nombre", "(null)", "x"}));

        ESPERAR_FALLO(c.texto(cuerpo, {}), kServidor, "expects parameter '@codigo', which was not supplied");
        ESPERAR_FALLO(c.texto(cuerpo, {std::nullopt, Valor("a")}), kServidor, "expects parameter '@codigo'");
        ESPERAR_FALLO(c.texto(cuerpo, {Valor(1), Valor(2), Valor(3), Valor(4), Valor(5)}), kServidor,
                      "has too many arguments specified");
        ESPERAR_FALLO(c.texto("SELECT @otro AS x;"), kServidor, "Must declare the scalar variable \"@otro\"");
        ESPERAR_FALLO(c.texto("--@param @a DECIMAL\nSELECT 1 AS x;"), kServidor, "cannot read the parameter line");
    }

    void cuerposTodoONada()
    {
        BaseTemporal base;
        Cliente c(base);
        c.texto("CREATE TABLE prueba (clave INTEGER PRIMARY KEY, texto TEXT);");

        // Every statement with columns gives one set, in order, even an empty one;
        // the others give none.
        auto rs = c.texto("--@param @t TEXT\n"
                          "INSERT INTO prueba VALUES (1, @t);\n"
                          "SELECT clave AS secuenciA FROM prueba WHERE clave = 99;\n"
                          "UPDATE prueba SET texto = texto || '!';\n"
                          "SELECT texto FROM prueba;",
                          {Valor("hola")});
        QCOMPARE(rs.RecordCount(), 0L);
        QVERIFY(rs.TieneCampo("secuenciA"));
        QVERIFY(rs.NextRecordset());
        QCOMPARE(rs.Fields("texto").aTexto(), QString("hola!"));
        QVERIFY(!rs.NextRecordset());

        // A statement that does not compile stops the call before anything runs;
        // a statement that fails as it runs takes back what the call did before it.
        ESPERAR_FALLO(c.texto("INSERT INTO prueba VALUES (2, 'a'); SELECT nada FROM prueba;"), kServidor, "no such column: nada");
        ESPERAR_FALLO(c.texto("INSERT INTO prueba VALUES (3, 'b'); INSERT INTO prueba VALUES (1, 'c');"), kServidor, "UNIQUE");
        QCOMPARE(c.texto("SELECT count(*) AS n FROM prueba;").Fields("n"), Valor(int64_t(1)));

        // A body may build a work table and then read it.
        QCOMPARE(c.texto("CREATE TEMP TABLE trabajo AS SELECT clave FROM prueba;\n"
                         "SELECT count(*) AS n FROM trabajo;\n"
                         "DROP TABLE trabajo;")
                     .Fields("n"),
                 Valor(int64_t(1)));
    }

    void conversionesDeLosValores()
    {
        BaseTemporal base;
        Cliente c(base);
        const auto entero = [&](const Valor& v) { return c.texto("--@param @v INTEGER\nSELECT @v AS v, typeof(@v) AS t;", {v}); };
        for (const auto& [dado, leido] :
             {std::pair {Valor("0012"), 12}, {Valor(" -7 "), -7}, {Valor(""), 0}, {Valor(3.9), 3}, {Valor(-3.9), -3}})
            QCOMPARE(entero(dado).Fields("v"), Valor(int64_t(leido)));
        QCOMPARE(entero(Valor()).Fields("t"), Valor("null"));
        ESPERAR_FALLO(entero(Valor("12a")), kServidor,
                      "Conversion failed when converting the varchar value '12a' to data type int.");
        ESPERAR_FALLO(entero(Valor("1.5")), kServidor, "varchar value '1.5'");

        const auto real = [&](const Valor& v) { return c.texto("--@param @v REAL\nSELECT @v AS v;", {v}); };
        for (const auto& [dado, leido] : {std::pair {Valor("12.5"), 12.5}, {Valor(" "), 0.0}, {Valor(4), 4.0}})
            QCOMPARE(real(dado).Fields("v"), Valor(leido));
        ESPERAR_FALLO(real(Valor("12,5")), kServidor, "Error converting data type varchar to float.");

        const auto texto = [&](const Valor& v) { return c.texto("--@param @v TEXT\nSELECT @v AS v;", {v}); };
        for (const auto& [dado, leido] :
             {std::pair {Valor(12.5), "12.5"}, {Valor(0.1), "0.1"}, {Valor(42), "42"}, {Valor(" a "), " a "}})
            QCOMPARE(texto(dado).Fields("v"), Valor(leido));

        const QDateTime cuando(QDate(2025, 3, 20), QTime(14, 5, 9));
        QCOMPARE(c.texto("--@param @v DATETIME\nSELECT @v AS v;", {Valor(cuando)}).Fields("v"), Valor("2025-03-20 14:05:09"));
        const QByteArray bytes("\x89PNG\0\x01", 6);
        auto rs = c.texto("--@param @v BLOB\nSELECT @v AS v, typeof(@v) AS t;", {Valor(bytes)});
        QCOMPARE(rs.Fields("v").aBytes(), bytes);
        QCOMPARE(rs.Fields("t"), Valor("blob"));

        // Amounts written with a decimal comma, as the catalogues send them.
        const auto leer = [&](const Valor& v) { return c.texto("--@param @t TEXT\nSELECT num_coma(@t) AS n;", {v}).Fields("n"); };
        const std::pair<const char*, double> casos[] = {
            {"1,234,50", 1234.5},   {"1,234,5678", 1234.5678},
            {"45,5", 45.5},         {"1.234,50", 1234.5},
            {"1234", 1234},         {"", 0},
            {"12.5", 12.5},         {" -3,25 ", -3.25},
            {"1.234.567", 1234567}, {"0,0001", 0.0001},
        };
        for (const auto& [texto, esperado] : casos)
            QVERIFY2(leer(Valor(texto)) == Valor(esperado), texto);
        QVERIFY(leer(Valor()).esNulo());
        QCOMPARE(c.texto("SELECT num_coma(7) AS n, num_coma(2.5) AS m;").Fields("m"), Valor(2.5));
        for (const char* malo : {"abc", "12,5x", "1,2-3", ",", "1 234,5"})
            ESPERAR_FALLO(leer(Valor(malo)), kServidor, "Error converting data type varchar to numeric.");
    }

    void procedimientosCompilados()
    {
        BaseTemporal base(true);
        Cliente c(base);

        // Names are found whatever their capitals.
        c.comando.CommandText = "tru_parametros";
        auto rs = c.comando.Execute();
        QVERIFY(!rs->Eof());
        QVERIFY(!rs->Fields("Clave").esNulo());
        rs->Fields("Dolar").aDouble();
        rs->MoveNext();
        QVERIFY(rs->Eof());
        ESPERAR_FALLO(rs->MoveNext(), 3021, "EOF");
        ESPERAR_FALLO(rs->Fields("Clave"), 3021, "registro actual");
        ESPERAR_FALLO(rs->Fields("NoExiste"), 3265, "NoExiste");

        c.comando.CommandText = "TRU_NO_EXISTE";
        ESPERAR_FALLO(c.comando.Execute(), kServidor, "Could not find stored procedure 'TRU_NO_EXISTE'.");
        ESPERAR_FALLO(c.servidor().compilar("TRU_NO_EXISTE"), kServidor, "Could not find stored procedure");

        // Every file of the folder reads and compiles against the schema, so that
        // a mistake in one shows here and not on the screen that calls it.
        const QStringList nombres = ServidorEmbebido::procedimientos();
        QVERIFY(nombres.contains("TRU_CARGA_TABLAS_03"));
        QStringList fallidos;
        for (const QString& nombre : nombres) {
            try {
                c.servidor().compilar(nombre);
            } catch (const FalloEjecucion& f) {
                fallidos << nombre + ": " + f.texto();
            }
        }
        QVERIFY2(fallidos.isEmpty(), qPrintable(fallidos.join('\n')));
    }

    void sentenciasDelClienteYLotesRotos()
    {
        BaseTemporal base(true);
        Cliente c(base);
        const auto fila = [&](const char* fecha, int secuencia, const char* columnas) {
            return base.valor(QStringLiteral("select %1 from MOVIMIENTOS where FECHA = '%2' and SECUENCIA = %3")
                                  .arg(QLatin1String(columnas), QLatin1String(fecha))
                                  .arg(secuencia));
        };

        // The server's clock is the machine's.
        auto rs = c.abrir("SELECT FECHA=GETDATE()");
        const QDateTime servidor = rs.Fields("Fecha").aFechaHora();
        QVERIFY(std::abs(servidor.secsTo(QDateTime::currentDateTime())) < 5);

        // Codes sent as padded text find the integer key.
        QCOMPARE(c.abrir("select top 1 * from fotos where cliente = '0000'").RecordCount(), 1L);
        QCOMPARE(c.abrir("select  * from fotos where cliente = 9999").RecordCount(), 1L);
        QVERIFY(!c.abrir("select  * from fotos where cliente = '09999'").Fields("img").aBytes().isEmpty());

        c.conexion.Execute(insertarMovimiento("20241225", "0012") + insertarMovimiento("20241225", "0013"), 2);
        QCOMPARE(fila("20241225", 12, "C_CLIENTE || '|' || obs"), QString("12|nota"));
        QCOMPARE(fila("20241225", 13, "count(*)"), QString("1"));

        c.conexion.Execute(actualizarMovimiento("20241225", "0012", "pagado", "1234.5"));
        QCOMPARE(fila("20241225", 12, "obs || '|' || pago"), QString("pagado|1234.5"));

        // A returned row is saved with empty gains: 0 in number columns, as SQL
        // Server takes them; an empty text stays empty in a text column.
        QString devuelto = actualizarMovimiento("20241225", "0013", "", "500");
        devuelto.replace("ganancia =  '100', g1 =  '95.25', g2 =  '95.25'", "ganancia =  '', g1 =  ' ', g2 =  ''");
        c.conexion.Execute(devuelto);
        c.conexion.Execute(" UPDATE proveedor SET  regalo = regalo +  '', ultregalo =  '' WHERE C_proveedor =  '3'");
        QCOMPARE(fila("20241225", 13, "ganancia || '|' || g1 || '|' || pago || '|' || obs"), QString("0.0|0.0|500.0|"));
        QCOMPARE(base.valor("select count(*) from proveedor where C_proveedor = 3 and ultregalo = 0"), QString("1"));
        QCOMPARE(ServidorEmbebido::adaptar(
                     " INSERT INTO bancos (C_Banco, D_banco) VALUES ('', '')", false,
                     [&](const QString&) {
                         return std::vector<ServidorEmbebido::ColumnaTabla> {{"C_Banco", true}, {"D_banco", false}};
                     })
                     .first(),
                 QString("INSERT INTO bancos (C_Banco, D_banco) VALUES (0, '')"));

        c.conexion.Execute("delete movimientos where  fecha = '20241225' and secuencia =  0012");
        QCOMPARE(base.valor("select count(*) from MOVIMIENTOS where FECHA = '20241225'"), QString("1"));

        // A batch whose second save fails at the server (a note longer than
        // its column) leaves the file as it was; the same batch in its
        // column is written whole.
        c.conexion.Execute(insertarMovimiento("20241226", "0001") + insertarMovimiento("20241226", "0002"), 2);
        const auto lote = [](const QString& nota) {
            return actualizarMovimiento("20241226", "0001", "primera", "1") + actualizarMovimiento("20241226", "0002", nota, "2");
        };
        const QString notas = QStringLiteral("select group_concat(obs) from MOVIMIENTOS where FECHA = '20241226'");
        ESPERAR_FALLO(c.conexion.Execute(lote(QString(501, QLatin1Char('n'))), 2), kServidor, "");
        QCOMPARE(base.valor(notas), QString("nota,nota"));
        c.conexion.Execute(lote(QStringLiteral("segunda")), 2);
        QCOMPARE(base.valor(notas), QString("primera,segunda"));
    }

    void creacionDeLaBase()
    {
        QTemporaryDir dir;
        const QString archivo = dir.filePath("datos/pagos.db");
        // A missing file is never made by an open: a mistyped path must not become new books.
        ESPERAR_FALLO(Cliente("Provider=embebido;Data Source=" + archivo), FalloEjecucion::conexion({}).numero(),
                      "No se encuentra la base de datos");
        QVERIFY(!QFileInfo::exists(dir.filePath("datos")));
        ServidorEmbebido::crearBase(archivo, true);
        {
            // Made, it has the demo data and the two pictures, readable by this account only.
            QCOMPARE(QFileInfo(archivo).permissions() & 0x0077, QFileDevice::Permissions());
            Cliente c("Provider=embebido;Data Source=" + archivo);
            QVERIFY(!c.abrir("select  * from fotos where cliente = 0").Fields("img").aBytes().isEmpty());
            QVERIFY(c.conexion.EsLocal());
        }
        QCOMPARE(QDir(dir.filePath("datos")).entryList({"*creando*"}, QDir::Files), QStringList {});
        ESPERAR_FALLO(ServidorEmbebido::crearBase(archivo, false), FalloEjecucion::conexion({}).numero(), "exists");

        // A second open keeps what the first one wrote.
        {
            Cliente c("Provider=embebido;Data Source=" + archivo);
            c.conexion.Execute(insertarMovimiento("20250101", "0001"));
        }
        Cliente c("Provider=embebido;Data Source=" + archivo);
        c.comando.CommandText = "TRU_Prepara";
        c.comando.Parameters(1) = Valor("20250101");
        QCOMPARE(c.comando.Execute()->Fields("secuenciA").aTexto(), QString("1"));
    }

    // A creation killed half-way left its file and log behind: the next start
    // removes them; a creation still running keeps its own.
    void restosDeUnaCreacionMuerta()
    {
        QTemporaryDir dir;
        const QString archivo = dir.filePath("pagos.db");
        QProcess muerto;
        muerto.start("sleep", {"0.1"});
        QVERIFY(muerto.waitForStarted());
        const qint64 pid = muerto.processId();
        QVERIFY(muerto.waitForFinished());
        const QString deMuerto = QStringLiteral("%1.creando-%2").arg(archivo).arg(pid);
        QProcess vivo; // another client, still creating
        vivo.start("sleep", {"30"});
        QVERIFY(vivo.waitForStarted());
        const QString deVivo = QStringLiteral("%1.creando-%2").arg(archivo).arg(vivo.processId());
        for (const QString& f : {deMuerto, deMuerto + "-wal", deMuerto + "-shm", deVivo, deVivo + "-wal"}) {
            QFile escrito(f);
            QVERIFY(escrito.open(QIODevice::WriteOnly));
        }
        ServidorEmbebido::crearBase(archivo, false);
        QDir carpeta(dir.path());
        QCOMPARE(carpeta.entryList({"*creando*"}, QDir::Files),
                 (QStringList {QFileInfo(deVivo).fileName(), QFileInfo(deVivo).fileName() + "-wal"}));
        vivo.kill();
        vivo.waitForFinished();
    }

    void dosClientesCompitenPorUnaSecuencia()
    {
        BaseTemporal base;
        Cliente uno(base);
        Cliente otro(base);
        const auto filas = [&] {
            return base.valor("select count(*) || '/' || count(DISTINCT SECUENCIA) || '/' || max(SECUENCIA)"
                              " from MOVIMIENTOS where FECHA = '20241225'");
        };

        // One writes; the other sends the same key and its row is stored under
        // the next free sequence of the date, not refused.
        uno.conexion.Execute(insertarMovimiento("20241225", "0001", "uno"));
        otro.conexion.Execute(insertarMovimiento("20241225", "1", "otro"));
        QCOMPARE(base.valor("select group_concat(SECUENCIA || obs) from MOVIMIENTOS where FECHA = '20241225'"),
                 QString("1uno,2otro"));
        // A free key further on is kept as sent; a batch that repeats its own key moves on too.
        otro.conexion.Execute(insertarMovimiento("20241225", "0007") + insertarMovimiento("20241225", "0007"), 2);
        QCOMPARE(filas(), QString("4/4/8"));

        // Both take the same sequences at the same time: every row is stored,
        // each under a key of its own, and no client meets a locked database.
        constexpr int kVeces = 40;
        std::atomic<int> otras {0};
        const auto carrera = [&](Cliente& c) {
            for (int i = 10; i < 10 + kVeces; ++i) {
                try {
                    c.conexion.Execute(insertarMovimiento("20241225", QString::number(i).rightJustified(4, '0')));
                } catch (const FalloEjecucion&) {
                    ++otras;
                }
            }
        };
        std::thread hilo(carrera, std::ref(uno));
        carrera(otro);
        hilo.join();
        QCOMPARE(otras.load(), 0);
        QCOMPARE(filas(), QString("84/84/89"));
    }

    // A version is never given twice: a row entered again under a deleted
    // row's key, or a row moved to another key, carries a new one. A file
    // made before the versions existed gets them when it is opened, its rows
    // kept, each loaded as version 0.
    void lasVersionesNoSeRepiten()
    {
        BaseTemporal base(false);
        const auto version = [&](int secuencia) {
            return base
                .valor(QStringLiteral("select coalesce((select version from MOVIMIENTOS_VERSION"
                                      " where FECHA='20261124' and SECUENCIA=%1), -1)")
                           .arg(secuencia))
                .toLongLong();
        };
        base.sql(QStringLiteral("INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA) VALUES ('20261124', 1), ('20261124', 2), "
                                "('20261124', 3), ('20261124', 4)"));
        const qint64 antes = version(3);
        QVERIFY(antes > 0);
        base.sql(QStringLiteral("DELETE FROM MOVIMIENTOS WHERE SECUENCIA = 3"));
        QCOMPARE(version(3), qint64(-1));
        base.sql(QStringLiteral("INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA) VALUES ('20261124', 3)"));
        const qint64 nueva = version(3);
        QVERIFY(nueva > version(4) && nueva > antes);
        base.sql(QStringLiteral("UPDATE MOVIMIENTOS SET SECUENCIA = 9 WHERE SECUENCIA = 3"));
        QCOMPARE(version(3), qint64(-1));
        QVERIFY(version(9) > nueva);

        base.sql(QStringLiteral("DROP TRIGGER movimientos_version_alta; DROP TRIGGER movimientos_version_cambio;"
                                "DROP TRIGGER movimientos_version_baja; DROP TABLE MOVIMIENTOS_VERSION;"
                                "DROP TABLE MOVIMIENTOS_CONTADOR; PRAGMA user_version = 0;"));
        Revision::Actualizar(base.archivo()); // as the start-up does with a file made before the versions
        ServidorEmbebido servidor(base.archivo());
        servidor.abrir();
        const Resultados r = servidor.procedimiento(QStringLiteral("TRU_CONSULTA_1127"),
                                                    {Valor(QStringLiteral("20261124")), Valor(QStringLiteral("20261124"))});
        QCOMPARE(r.front().filas.size(), size_t(4));
        QCOMPARE(r.front().columnas.last(), QStringLiteral("version_fila"));
        for (const auto& fila : r.front().filas)
            QCOMPARE(fila.back().aTexto(), QStringLiteral("0"));
        base.sql(QStringLiteral("UPDATE MOVIMIENTOS SET C_CLIENTE = 13 WHERE SECUENCIA = 1"));
        QCOMPARE(version(1), qint64(1));
    }
};

REGISTRAR_PRUEBA(PruebaEmbebido);
#include "tst_embebido.moc"
