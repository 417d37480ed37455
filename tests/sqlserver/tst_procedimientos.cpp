// Every procedure and every raw statement shape of the program, sent through
// the production backend (FreeTDS, as TRUMIN) to the T-SQL server and through
// the embedded backend to its twin holding the same rows: the same result sets
// (columns in order, rows in order, values as the screens read them), the same
// refusals, and the same rows stored.
#include "fallo.h"
#include "prueba.h"
#include "tsql.h"

#include <QDate>
#include <QFile>

namespace {

struct Respuesta {
    Resultados conjuntos;
    QString fallo; // empty when the call went through
};

// One comparison's account: every difference, and how many calls were compared.
struct Cuenta {
    QStringList diferencias;
    int llamadas = 0;

    void comparar(const QString& que, const Respuesta& e, const Respuesta& s)
    {
        ++llamadas;
        if (e.fallo.isEmpty() != s.fallo.isEmpty()) {
            diferencias << QStringLiteral("%1: embedded %2, SQL Server %3")
                               .arg(que, e.fallo.isEmpty() ? QStringLiteral("answered") : QStringLiteral("failed (%1)").arg(e.fallo),
                                    s.fallo.isEmpty() ? QStringLiteral("answered") : QStringLiteral("failed (%1)").arg(s.fallo));
            return;
        }
        for (const QString& d : ::diferencias(e.conjuntos, s.conjuntos))
            diferencias << que + QStringLiteral(": ") + d;
    }
};

class Pareja {
public:
    explicit Pareja(ServidorTsql& s) : tsql_(s), embebido_(s.embebido()), sqlServer_(s.sqlServer()) {}

    // The same procedure call on both servers.
    void procedimiento(const char* nombre, const std::vector<Parametro>& valores)
    {
        QStringList texto;
        for (const Parametro& p : valores)
            texto << (p ? comparable(*p) : QStringLiteral("(defecto)"));
        const QString que = QStringLiteral("%1(%2)").arg(QLatin1String(nombre), texto.join(QLatin1Char(',')));
        cuenta.comparar(que, llamar([&](Servidor& s) { return s.procedimiento(QLatin1String(nombre), valores); }, *embebido_),
                        llamar([&](Servidor& s) { return s.procedimiento(QLatin1String(nombre), valores); }, *sqlServer_));
    }
    // The same raw select on both servers.
    void consulta(const QString& sql)
    {
        cuenta.comparar(sql, llamar([&](Servidor& s) { return s.abrirConsulta(sql); }, *embebido_),
                        llamar([&](Servidor& s) { return s.abrirConsulta(sql); }, *sqlServer_));
    }
    // The same raw change on both servers, then the rows it may have touched.
    void cambio(const QString& sql, int sentencias, const QString& tabla, const QString& donde, const QString& orden)
    {
        const auto ejecutar = [&](Servidor& s) {
            s.ejecutar(sql, sentencias);
            return Resultados{};
        };
        cuenta.comparar(sql.left(60), llamar(ejecutar, *embebido_), llamar(ejecutar, *sqlServer_));
        filas(tabla, donde, orden);
    }
    // The rows of a table that a condition picks, compared between the servers.
    void filas(const QString& tabla, const QString& donde, const QString& orden)
    {
        const QString t = QStringLiteral("%1 WHERE %2").arg(tabla, donde);
        const QStringList e = ServidorTsql::tablaEmbebida(tsql_.gemelo().archivo(), t, orden);
        const QStringList s = tsql_.tablaSqlServer(t, orden);
        ++cuenta.llamadas;
        if (e != s)
            cuenta.diferencias << QStringLiteral("rows of %1: [%2] embedded, [%3] on SQL Server")
                                      .arg(t, e.join(QStringLiteral(" / ")).left(600), s.join(QStringLiteral(" / ")).left(600));
        else if (e.isEmpty())
            cuenta.diferencias << QStringLiteral("rows of %1: none on either server, nothing compared").arg(t);
    }

    Cuenta cuenta;

private:
    template <class F>
    static Respuesta llamar(F&& f, Servidor& s)
    {
        try {
            return {f(s), {}};
        } catch (const FalloEjecucion& fallo) {
            return {{}, fallo.texto().isEmpty() ? QStringLiteral("(sin texto)") : fallo.texto()};
        }
    }

    ServidorTsql& tsql_;
    std::unique_ptr<Servidor> embebido_;
    std::unique_ptr<Servidor> sqlServer_;
};

// The account printed; the test fails with every difference.
void informar(const Cuenta& c)
{
    std::printf("%d comparisons of the two servers, %lld differences\n", c.llamadas, qlonglong(c.diferencias.size()));
    QVERIFY2(c.diferencias.isEmpty(), qPrintable(c.diferencias.join(QLatin1Char('\n'))));
}

QString ymd(const QDate& d)
{
    return d.toString(QStringLiteral("yyyyMMdd"));
}

// A new transaction as the entry screen sends it.
QString alta(const QString& fecha, int secuencia, const QString& obs)
{
    return QStringLiteral(" INSERT INTO MOVIMIENTOS VALUES ('%1','%2','0012','100','94.3','0','0','','','0','1',2,'1',"
                          "0,'',0,0,'',100,'%3','94.3','94.3',0,'','',0,0,'0')")
        .arg(fecha, QStringLiteral("%1").arg(secuencia, 4, 10, QLatin1Char('0')), obs);
}

// A console's save of one row with the common assignments, then the ones given.
QString guardado(const QString& fecha, int secuencia, const QString& resto)
{
    return QStringLiteral(" UPDATE MOVIMIENTOS SET  recibido =  '94.3', enviado =  '100', C_CLIENTE =  '0012', obs =  'guardado',"
                          " C_PROVEEDOR =  '0003', pago =  '34.5', C_BANCO =  '0134', operadora =  '2', REFERENCIA =  'REF Ñ-1',"
                          " confirmacion =  '0', tipo_operacion =  '3', ganancia =  '4.25',%3 tipo_servicio =  '1'"
                          " WHERE FECHA=  '%1' and SECUENCIA = '%2'")
        .arg(fecha, QString::number(secuencia), resto);
}

} // namespace

class PruebaProcedimientos : public QObject {
    Q_OBJECT
private slots:
    // The procedures that only read, with the values the screens send them.
    void lecturas()
    {
        Pareja p(*ServidorTsql::instancia());
        const QDate hoy = QDate::currentDate();
        const QString mes = hoy.toString(QStringLiteral("yyyyMM"));
        const QString mesAnterior = hoy.addMonths(-1).toString(QStringLiteral("yyyyMM"));
        const QString ano = hoy.toString(QStringLiteral("yyyy"));

        for (const char* nombre : {"TRU_PARAMETROS", "TRU_CARGA_TABLAS_03", "TRU_CLIENTES", "TRU_BANCOS", "TRU_BANCOS_ZELLE",
                                   "TRU_CONCEPTOS", "TRU_servicios", "TRU_servicios_USDT", "TRU_proveedor", "TRU_dolares",
                                   "Ramil_lista_Notificaciones"})
            p.procedimiento(nombre, {});
        for (const char* texto : {"", "perez le", "pena", "PEÑA", "josé", "12", "0012", "%", "_", "[a]", "'", "zzzz"})
            p.procedimiento("TRU_Busca_CLIENTES", {Valor(texto)});
        for (const Valor& servicio : {Valor(0), Valor(1), Valor(9), Valor(50), Valor("58")})
            p.procedimiento("TRU_CLIENTES_01", {servicio});
        for (const char* cliente : {"0012", "12", "1", "3999", "9999", "0"})
            p.procedimiento("TRU_Cuenta_servicios", {Valor(cliente)});
        for (const QString& fecha : {ymd(hoy), ymd(hoy.addDays(-1)), QStringLiteral("20990101"), QString()})
            p.procedimiento("TRU_Prepara", {Valor(fecha)});

        // The three consoles with each filter, and free texts with accents and ñ.
        const QString desde = mesAnterior + QStringLiteral("01");
        for (const char* consulta : {"TRU_CONSULTA_1127", "TRU_CONSULTA_PAGO_250320", "TRU_CONSULTA_USDT"}) {
            for (int pago : {0, 1, 2})
                for (int operadora : {0, 1, 2})
                    p.procedimiento(consulta, {Valor(desde), Valor(ymd(hoy)), Valor(pago), Valor(operadora), Valor(""), Valor(""), Valor(0)});
            for (const Valor& servicio : {Valor(1), Valor(9), Valor(50), Valor(98), Valor(99)})
                p.procedimiento(consulta, {Valor(ymd(hoy.addDays(-20))), Valor(ymd(hoy)), Valor(0), Valor(0), Valor(""), Valor(""), servicio});
            for (const auto& [uno, dos] : {std::pair{"maria", ""}, std::pair{"", "PEÑA"}, std::pair{"jose", "perez"},
                                           std::pair{"ñ", ""}, std::pair{"REF", ""}, std::pair{"'", ""}, std::pair{"%", "_"}})
                p.procedimiento(consulta, {Valor(mesAnterior), Valor(ymd(hoy)), Valor(0), Valor(0), Valor(uno), Valor(dos), Valor(0)});
            // The dates as the console's boxes may hold them: a month alone, an empty end.
            p.procedimiento(consulta, {Valor(mes), Valor(""), Valor(0), Valor(0), Valor(""), Valor(""), Valor(0)});
        }

        // The statistics of a month and a year, with their filters; the service
        // as a box's index (a number) and as a list's code (two characters).
        for (const QString& m : {mes, mesAnterior})
            for (int operadora : {0, 1, 2})
                for (const Valor& servicio : {Valor(0), Valor(1), Valor("04"), Valor(98), Valor(99), Valor("09")})
                    p.procedimiento("TRU_NewCalk_02_250320", {Valor(m), Valor(operadora), servicio});
        for (const Valor& servicio : {Valor(0), Valor("50"), Valor("58"), Valor(98)})
            p.procedimiento("TRU_NewCalk_02_USDT", {Valor(mes), Valor(0), servicio});
        for (const Valor& servicio : {Valor(0), Valor(2), Valor(98)})
            for (int operadora : {0, 1})
                p.procedimiento("TRU_NewCalk_03_250320", {Valor(ano), Valor(operadora), servicio});
        p.procedimiento("TRU_NewCalk_03_250320", {Valor(hoy.addYears(-1).toString(QStringLiteral("yyyy"))), Valor(0), Valor(0)});
        for (const Valor& servicio : {Valor(0), Valor("50"), Valor("56")})
            p.procedimiento("TRU_NewCalk_03_USDT", {Valor(0), servicio});
        // Period texts as the boxes may hold them: a month with one digit, and
        // texts that name no month or no year.
        const QString mesSinCero = ano + QString::number(hoy.month());
        for (const QString& texto : {mesSinCero, QString(), ano, QStringLiteral("abcd"), ano + QStringLiteral("13"),
                                     ano + QStringLiteral("0"), ano.right(2) + QStringLiteral("01"), ano + QStringLiteral(" 1")}) {
            p.procedimiento("TRU_NewCalk_02_250320", {Valor(texto), Valor(0), Valor(0)});
            p.procedimiento("TRU_NewCalk_02_USDT", {Valor(texto), Valor(0), Valor(0)});
        }
        for (const QString& texto : {QString(), ano.right(2), QStringLiteral("abcd"), ano + QStringLiteral("1"), QStringLiteral(" ") + ano})
            p.procedimiento("TRU_NewCalk_03_250320", {Valor(texto), Valor(0), Valor(0)});

        // The raw selects: the server's clock, the two rate tables, a photo.
        for (const char* sql : {"SELECT FECHA=GETDATE()", " select * from dolar", " select * from dolar_NEW",
                                "select top 1 * from fotos where cliente = '0012'", "select  * from fotos where cliente = 9999",
                                "select top 1 * from fotos where cliente = 0"})
            p.consulta(QString::fromLatin1(sql));

        QVERIFY(p.cuenta.llamadas > 150);
        informar(p.cuenta);
    }

    // The procedures that change the catalogues, the rates and the pictures,
    // each followed by what the screens read back.
    void cambiosDeCatalogosYTasas()
    {
        Pareja p(*ServidorTsql::instancia());
        p.procedimiento("TRU_IN_BANCOS", {Valor(0), Valor("BANCO DE PRUEBA ÑANDÚ")});
        p.procedimiento("TRU_IN_BANCOS", {Valor("0134"), Valor("BANESCO RENOMBRADO")});
        p.procedimiento("TRU_BANCOS", {});
        p.procedimiento("TRU_IN_CLIENTES_01", {Valor("CLIENTE DE PRUEBA ÁÉÍÓÚ")});
        p.procedimiento("TRU_MOD_CLIENTES", {Valor("0012"), Valor("MARÍA PRUEBA"), Valor("9999")});
        p.procedimiento("TRU_MOD_CLIENTES", {Valor(13), Valor(QString(70, QLatin1Char('X'))), Valor("")});
        p.procedimiento("TRU_CLIENTES", {});
        p.procedimiento("TRU_IN_CONCEPTOS", {Valor("CONCEPTO NUEVO")});
        p.procedimiento("TRU_MOD_Conceptos", {Valor(1), Valor("CONCEPTO CAMBIADO")});
        p.procedimiento("TRU_CONCEPTOS", {});
        p.procedimiento("TRU_MOD_bancos_zelle", {Valor(3), Valor("ZELLE PRUEBA")});
        p.procedimiento("TRU_BANCOS_ZELLE", {});
        p.procedimiento("TRU_IN_proveedor_01", {Valor("PROVEEDOR NUEVO"), Valor("CLAVE")});
        p.procedimiento("TRU_MOD_proveedor_01", {Valor(3), Valor("PROVEEDOR TRES"), Valor("K3"), Valor("45,5"), Valor("1.234,50"), Valor("12,75")});
        p.procedimiento("TRU_proveedor", {});
        p.procedimiento("TRU_IN_SERVICIOS_02", {Valor("SERVICIO NUEVO"), Valor("7,5"), Valor(2), Valor(1), Valor("q")});
        p.procedimiento("TRU_MOD_servicios_01", {Valor(5), Valor("BANESCO PANAMA 2"), Valor("3,25"), Valor(3)});
        p.procedimiento("TRU_MOD_servicios_01", {Valor(6), Valor("WISE"), Valor("2"), Valor(2), Valor(1), Valor("w"), Valor("I")});
        p.procedimiento("TRU_servicios", {});
        p.procedimiento("TRU_IN_SERVICIOS_USDT", {Valor("USDT NUEVO"), Valor(9.0)});
        p.procedimiento("TRU_MOD_servicios_USDT", {Valor(56), Valor("SOLES PERU"), Valor("3,85"), Valor("3,9"), Valor(1)});
        p.procedimiento("TRU_MOD_servicios_USDT", {Valor(2), Valor("USDT BASE"), Valor("372,80"), Valor("0")});
        p.procedimiento("TRU_servicios_USDT", {});

        // The rates: the plain dollar with a point, the wallets and services with
        // a comma, an empty amount that keeps the stored rate.
        const QDateTime momento(QDate(2026, 11, 20), QTime(9, 30, 15));
        p.procedimiento("TRU_UPDATE_DOLAR", {Valor(momento), Valor("380.50")});
        p.procedimiento("TRU_UPDATE_DOLAR_01", {Valor(momento), Valor("332,60"), Valor("343,57"), Valor("350,88"), Valor("310,67")});
        p.procedimiento("TRU_UPDATE_DOLAR_02", {Valor(1), Valor("361,616")});
        p.procedimiento("TRU_UPDATE_DOLAR_02", {Valor(2), Valor("")});
        p.procedimiento("TRU_UPDATE_DOLAR_02", {Valor(9), Valor("1.250,5")});
        p.procedimiento("TRU_UPDATE_DOLAR_03", {Valor("366,25")});
        p.procedimiento("TRU_dolares", {});
        p.procedimiento("TRU_PARAMETROS", {});
        p.consulta(QStringLiteral(" select * from dolar"));
        p.consulta(QStringLiteral(" select * from dolar_NEW"));
        p.procedimiento("TRU_CARGA_TABLAS_03", {});

        // A picture stored and read back byte for byte, and one replaced.
        QFile png(QStringLiteral(CARPETA_BD "/fotos/revision.png"));
        QVERIFY(png.open(QIODevice::ReadOnly));
        const QByteArray foto = png.readAll();
        p.procedimiento("TRU_IN_FOTOS", {Valor(12), Valor(foto)});
        p.procedimiento("TRU_IN_FOTOS", {Valor(12), Valor(foto.left(foto.size() - 7))});
        p.procedimiento("TRU_IN_FOTOS", {Valor(14), Valor(QByteArray(1, '\0') + foto)});
        p.consulta(QStringLiteral("select top 1 * from fotos where cliente = '0012'"));
        p.consulta(QStringLiteral("select top 1 * from fotos where cliente = 14"));

        for (const auto& [tabla, orden] : {std::pair{"bancos", "C_Banco"}, std::pair{"clientes", "C_CLIENTE"},
                                           std::pair{"conceptos", "C_CONCEPTO"}, std::pair{"proveedor", "C_proveedor"},
                                           std::pair{"servicios", "C_SERVIcio"}, std::pair{"servicios_usdt", "C_SERVIcio"},
                                           std::pair{"bancos_zelle", "C_Banco"}, std::pair{"fotos", "cliente"}})
            p.filas(QLatin1String(tabla), QStringLiteral("1 = 1"), QLatin1String(orden));
        informar(p.cuenta);
    }

    // The raw changes: a run of new transactions, each console's saves, the
    // provider's gift in its two forms, a delete; the rows compared after each.
    void cambiosCrudos()
    {
        Pareja p(*ServidorTsql::instancia());
        const QString fecha = QStringLiteral("20300115");
        const QString delDia = QStringLiteral("FECHA = '%1'").arg(fecha);
        const QString orden = QStringLiteral("FECHA, SECUENCIA");
        p.cambio(alta(fecha, 1, QStringLiteral("uno")) + alta(fecha, 2, QStringLiteral("dos ñandú €")) + alta(fecha, 3, QStringLiteral("tres")),
                 3, QStringLiteral("MOVIMIENTOS"), delDia, orden);
        // A key already taken goes in under the next free sequence.
        p.cambio(alta(fecha, 2, QStringLiteral("repetida")), 1, QStringLiteral("MOVIMIENTOS"), delDia, orden);
        p.procedimiento("TRU_Prepara", {Valor(fecha)});

        const QString ganancias = QStringLiteral(" g1 =  '4.01', g2 =  '2.4', g3 =  '1.61',");
        const QString pagoDelDia = QStringLiteral(" fecha_pago =  '20300116', hora_pago =  '10:15:00', dolar1 =  '365.5', dolar2 =  '372.8',");
        const QString zelle = QStringLiteral(" bancozelle =  '3',");
        int secuencia = 0;
        for (const QString& resto : {QString(), ganancias, ganancias + zelle, ganancias + pagoDelDia + zelle})
            p.cambio(guardado(fecha, ++secuencia, resto), 1, QStringLiteral("MOVIMIENTOS"), delDia, orden);
        p.cambio(guardado(fecha, 1, ganancias) + guardado(fecha, 2, ganancias + pagoDelDia + zelle), 2,
                 QStringLiteral("MOVIMIENTOS"), delDia, orden);
        // A returned row's empty gains, and an amount dotted with thousands
        // marks, which neither server takes for a number.
        QString devuelta = guardado(fecha, 3, ganancias);
        devuelta.replace(QStringLiteral("C_BANCO =  '0134'"), QStringLiteral("C_BANCO =  '7777'"))
            .replace(QStringLiteral("g1 =  '4.01'"), QStringLiteral("g1 =  ''"))
            .replace(QStringLiteral("'94.3'"), QStringLiteral("'1.234.50'"));
        p.cambio(devuelta, 1, QStringLiteral("MOVIMIENTOS"), delDia, orden);

        p.cambio(QStringLiteral(" UPDATE proveedor SET  regalo = regalo +  ' 1.5', ultregalo =  ' 1.5' WHERE C_proveedor =  '3'"), 1,
                 QStringLiteral("proveedor"), QStringLiteral("C_proveedor = 3"), QStringLiteral("C_proveedor"));
        p.cambio(QStringLiteral(" UPDATE proveedor SET  regalo = regalo -  '-2'  WHERE C_proveedor =  '0004'"), 1,
                 QStringLiteral("proveedor"), QStringLiteral("C_proveedor = 4"), QStringLiteral("C_proveedor"));
        p.cambio(QStringLiteral("delete movimientos where  fecha = '%1' and secuencia =  0002").arg(fecha), 1,
                 QStringLiteral("MOVIMIENTOS"), delDia, orden);
        p.procedimiento("TRU_CONSULTA_1127", {Valor(fecha), Valor(fecha), Valor(0), Valor(0), Valor(""), Valor(""), Valor(0)});
        p.procedimiento("TRU_CONSULTA_PAGO_250320", {Valor(QStringLiteral("20300116")), Valor(QStringLiteral("20300116")), Valor(0),
                                                     Valor(0), Valor(""), Valor(""), Valor(0)});
        p.procedimiento("TRU_NewCalk_02_250320", {Valor(QStringLiteral("203001")), Valor(0), Valor(0)});

        informar(p.cuenta);
    }

    // The statistics of a month whose banks carry blanks: one bank however
    // it was typed, a return is a return with blanks around it, an unpaid row
    // counts its whole gain, and a month typed with one digit is that month;
    // the same on both servers, and right on SQL Server's own account.
    void estadisticasConBlancos()
    {
        Pareja p(*ServidorTsql::instancia());
        const QString fecha = QStringLiteral("20310310");
        const QString delDia = QStringLiteral("FECHA = '%1'").arg(fecha);
        const QString orden = QStringLiteral("FECHA, SECUENCIA");
        QString altas;
        for (int n = 1; n <= 6; ++n)
            altas += alta(fecha, n, QStringLiteral("blancos"));
        p.cambio(altas, 6, QStringLiteral("MOVIMIENTOS"), delDia, orden);
        const QString ganancias = QStringLiteral(" g1 =  '4.01', g2 =  '2.4', g3 =  '1.61',");
        int secuencia = 1; // the first stays unpaid: g2 is what was received
        for (const char* banco : {" 0134", "0134 ", "0134", " 7777", "7777 "})
            p.cambio(guardado(fecha, ++secuencia, ganancias).replace(QStringLiteral("C_BANCO =  '0134'"),
                                                                  QStringLiteral("C_BANCO =  '%1'").arg(QLatin1String(banco))),
                     1, QStringLiteral("MOVIMIENTOS"), delDia, orden);
        for (const char* periodo : {"203103", "20313"}) {
            p.procedimiento("TRU_NewCalk_02_250320", {Valor(periodo), Valor(0), Valor(0)});
            p.procedimiento("TRU_NewCalk_02_USDT", {Valor(periodo), Valor(0), Valor(0)});
        }
        p.procedimiento("TRU_NewCalk_03_250320", {Valor("2031"), Valor(0), Valor(0)});
        informar(p.cuenta);

        const auto sqlServer = ServidorTsql::instancia()->sqlServer();
        auto campo = [](const ConjuntoResultados& c, size_t fila, const char* nombre) {
            return c.filas.at(fila).at(size_t(c.columnas.indexOf(QLatin1String(nombre)))).aDouble();
        };
        for (const char* periodo : {"203103", "20313"}) {
            const Resultados r = sqlServer->procedimiento(QStringLiteral("TRU_NewCalk_02_250320"), {Valor(periodo), Valor(0), Valor(0)});
            QCOMPARE(r.size(), size_t(6));
            QCOMPARE(r[0].filas.size(), size_t(1));
            QCOMPARE(campo(r[0], 0, "dia"), 10.0);
            QCOMPARE(campo(r[0], 0, "Tot_m"), 4.0);                  // the two returns count nowhere
            QCOMPARE(qRound(campo(r[0], 0, "Suma") * 100), 37720);   // 4 x 94.3
            QCOMPARE(qRound(campo(r[0], 0, "Totgan") * 100), 10150); // 94.3 unpaid + 3 x 2.4
            QCOMPARE(r[3].filas.size(), size_t(1));
            QCOMPARE(r[3].filas[0][0].aTexto(), QStringLiteral("0134"));
            QCOMPARE(qRound(campo(r[3], 0, "Suma") * 100), 28290);
        }
        for (const char* periodo : {"2031", "203113", "31033", ""})
            for (const ConjuntoResultados& c :
                 sqlServer->procedimiento(QStringLiteral("TRU_NewCalk_02_250320"), {Valor(periodo), Valor(0), Valor(0)}))
                QVERIFY2(c.filas.empty(), periodo);
    }
};

REGISTRAR_PRUEBA(PruebaProcedimientos);
#include "tst_procedimientos.moc"
