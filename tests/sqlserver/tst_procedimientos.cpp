// Every procedure and every raw statement shape of the program, sent through
// the production backend (FreeTDS, as TRUMIN) to the T-SQL server and through
// the embedded backend to its twin holding the same rows: the same result sets
// (columns in order, rows in order, values as the screens read them), the same
// refusals, and the same rows stored; a batch all or nothing, the texts at
// their columns' lengths kept alike, and the server's clock. (The statement
// guard, which refuses other texts and characters before either server is
// reached, is tested once, in tests/server/tst_guardia.cpp.)
#include "fallo.h"
#include "prueba.h"
#include "sesion.h"
#include "tsql.h"

#include <QDate>
#include <QFile>
#include <QRandomGenerator>

namespace {

struct Respuesta {
    Resultados conjuntos;
    QString fallo; // empty when the call went through
};

// One comparison's account: every difference, and how many calls were compared.
struct Cuenta {
    QStringList diferencias;
    int llamadas = 0;

    // `fallan`: the call is to fail on both.
    void comparar(const QString& que, const Respuesta& e, const Respuesta& s, bool fallan = false)
    {
        ++llamadas;
        const auto como = [](const Respuesta& r) {
            return r.fallo.isEmpty() ? QStringLiteral("answered") : QStringLiteral("failed (%1)").arg(r.fallo);
        };
        if (e.fallo.isEmpty() != s.fallo.isEmpty() || (fallan && e.fallo.isEmpty()))
            diferencias << QStringLiteral("%1: embedded %2, SQL Server %3%4")
                               .arg(que, como(e), como(s), fallan ? QStringLiteral(", both to fail") : QString());
        else
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
    // The same raw change on both servers (to fail on both, when told), then
    // the rows it may have touched.
    void cambio(const QString& sql, int sentencias, const QString& tabla, const QString& donde, const QString& orden,
                bool fallan = false)
    {
        const auto ejecutar = [&](Servidor& s) {
            s.ejecutar(sql, sentencias);
            return Resultados {};
        };
        cuenta.comparar(sql.left(60), llamar(ejecutar, *embebido_), llamar(ejecutar, *sqlServer_), fallan);
        filas(tabla, donde, orden);
    }
    // The same for the transactions of one day.
    void delDia(const QString& sql, int sentencias, const QString& fecha, bool fallan = false)
    {
        cambio(sql, sentencias, QStringLiteral("MOVIMIENTOS"), QStringLiteral("FECHA = '%1'").arg(fecha),
               QStringLiteral("FECHA, SECUENCIA"), fallan);
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
    template <class F> static Respuesta llamar(F&& f, Servidor& s)
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

QString ymd(const QDate& d) { return d.toString(QStringLiteral("yyyyMMdd")); }

// A new transaction as the entry screen sends it.
QString alta(const QString& fecha, int secuencia, const QString& obs)
{
    return QStringLiteral(" INSERT INTO MOVIMIENTOS VALUES ('%1','%2','0012','100','94.3','0','0','','','0','1',2,'1',"
                          "0,'',0,0,'',100,'%3','94.3','94.3',0,'','',0,0,'0')")
        .arg(fecha, QStringLiteral("%1").arg(secuencia, 4, 10, QLatin1Char('0')), obs);
}

// A console's save of one row with the common assignments, then the ones given.
QString guardado(const QString& fecha, int secuencia, const QString& resto, const QString& obs = QStringLiteral("guardado"),
                 const QString& referencia = QStringLiteral("REF Ñ-1"), const QString& operadora = QStringLiteral("2"))
{
    return QStringLiteral(" UPDATE MOVIMIENTOS SET  recibido =  '94.3', enviado =  '100', C_CLIENTE =  '0012', obs =  '%4',"
                          " C_PROVEEDOR =  '0003', pago =  '34.5', C_BANCO =  '0134', operadora =  '%6', REFERENCIA =  '%5',"
                          " confirmacion =  '0', tipo_operacion =  '3', ganancia =  '4.25',%3 tipo_servicio =  '1'"
                          " WHERE FECHA=  '%1' and SECUENCIA = '%2'")
        .arg(fecha, QString::number(secuencia), resto, obs, referencia, operadora);
}

// True when row 1 of the day holds exactly this text in the column. SQL
// Server compares it itself (accents count, capitals not): the test server
// keeps varchar as UTF-8, and a long accented text does not come back whole
// through the administrator's ODBC reading, while it is stored whole.
bool guarda(bool sqlServer, const QString& fecha, const char* columna, const QString& texto)
{
    ServidorTsql& s = *ServidorTsql::instancia();
    const QString donde = QStringLiteral(" FROM MOVIMIENTOS WHERE FECHA = '%1' AND SECUENCIA = 1").arg(fecha);
    if (!sqlServer)
        return s.gemelo().valor(QStringLiteral("SELECT %1").arg(QLatin1String(columna)) + donde) == texto;
    return s.filas(QStringLiteral("SELECT CASE WHEN %1 = N'%2' AND LEN(%1) = %3 THEN 'si' ELSE 'no' END")
                       .arg(QLatin1String(columna), QString(texto).replace(QLatin1Char('\''), QStringLiteral("''")))
                       .arg(texto.size()) +
                   donde)
               .value(0)
               .value(0) == QLatin1String("si");
}

// One value of the first row of a call's first set, by its column's name in any case.
QString campo(const Resultados& r, const char* columna)
{
    const ConjuntoResultados& c = r.at(0);
    for (qsizetype i = 0; i < c.columnas.size(); ++i)
        if (c.columnas[i].compare(QLatin1String(columna), Qt::CaseInsensitive) == 0 && !c.filas.empty())
            return c.filas[0].at(size_t(i)).aTexto();
    return QStringLiteral("(no %1)").arg(QLatin1String(columna));
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

        for (const char* nombre :
             {"TRU_PARAMETROS", "TRU_CARGA_TABLAS_03", "TRU_CLIENTES", "TRU_BANCOS", "TRU_BANCOS_ZELLE", "TRU_CONCEPTOS",
              "TRU_servicios", "TRU_servicios_USDT", "TRU_proveedor", "TRU_dolares", "Ramil_lista_Notificaciones"})
            p.procedimiento(nombre, {});
        for (const char* texto : {"", "perez le", "pena", "PEÑA", "PEÑA €", "josé", "12", "0012", "%", "_", "[a]", "'", "zzzz"})
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
                    p.procedimiento(
                        consulta, {Valor(desde), Valor(ymd(hoy)), Valor(pago), Valor(operadora), Valor(""), Valor(""), Valor(0)});
            for (const Valor& servicio : {Valor(1), Valor(9), Valor(50), Valor(98), Valor(99)})
                p.procedimiento(consulta, {Valor(ymd(hoy.addDays(-20))), Valor(ymd(hoy)), Valor(0), Valor(0), Valor(""),
                                           Valor(""), servicio});
            for (const auto& [uno, dos] : {std::pair {"maria", ""}, std::pair {"", "PEÑA"}, std::pair {"jose", "perez"},
                                           std::pair {"ñ", ""}, std::pair {"REF", ""}, std::pair {"'", ""}, std::pair {"%", "_"}})
                p.procedimiento(consulta,
                                {Valor(mesAnterior), Valor(ymd(hoy)), Valor(0), Valor(0), Valor(uno), Valor(dos), Valor(0)});
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
        for (const QString& texto :
             {mesSinCero, QString(), ano, QStringLiteral("abcd"), ano + QStringLiteral("13"), ano + QStringLiteral("0"),
              ano.right(2) + QStringLiteral("01"), ano + QStringLiteral(" 1")}) {
            p.procedimiento("TRU_NewCalk_02_250320", {Valor(texto), Valor(0), Valor(0)});
            p.procedimiento("TRU_NewCalk_02_USDT", {Valor(texto), Valor(0), Valor(0)});
        }
        for (const QString& texto :
             {QString(), ano.right(2), QStringLiteral("abcd"), ano + QStringLiteral("1"), QStringLiteral(" ") + ano})
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
    // then what the screens read back.
    void cambiosDeCatalogosYTasas()
    {
        Pareja p(*ServidorTsql::instancia());
        p.procedimiento("TRU_IN_BANCOS", {Valor(0), Valor("BANCO DE PRUEBA ÑANDÚ")});
        p.procedimiento("TRU_IN_BANCOS", {Valor("0134"), Valor("BANESCO RENOMBRADO")});
        p.procedimiento("TRU_IN_CLIENTES_01", {Valor("MARÍA JOSÉ ÑÁÑEZ DE LA PEÑA Y SANTAMARÍA")}); // 40, as the field holds
        p.procedimiento("TRU_MOD_CLIENTES", {Valor("0012"), Valor("MARÍA PRUEBA"), Valor("9999")});
        p.procedimiento("TRU_MOD_CLIENTES", {Valor(13), Valor(QString(70, QLatin1Char('X'))), Valor("")});
        p.procedimiento("TRU_IN_CONCEPTOS", {Valor("CONCEPTO NUEVO")});
        p.procedimiento("TRU_MOD_Conceptos", {Valor(1), Valor("CONCEPTO CAMBIADO")});
        p.procedimiento("TRU_MOD_bancos_zelle", {Valor(3), Valor("ZELLE PRUEBA")});
        p.procedimiento("TRU_IN_proveedor_01", {Valor("PROVEEDOR NUEVO"), Valor("CLAVE")});
        p.procedimiento("TRU_MOD_proveedor_01",
                        {Valor(3), Valor("PROVEEDOR TRES"), Valor("K3"), Valor("45,5"), Valor("1.234,50"), Valor("12,75")});
        p.procedimiento("TRU_IN_SERVICIOS_02", {Valor("SERVICIO NUEVO"), Valor("7,5"), Valor(2), Valor(1), Valor("q")});
        p.procedimiento("TRU_MOD_servicios_01", {Valor(5), Valor("BANESCO PANAMA 2"), Valor("3,25"), Valor(3)});
        p.procedimiento("TRU_MOD_servicios_01",
                        {Valor(6), Valor("WISE"), Valor("2"), Valor(2), Valor(1), Valor("w"), Valor("I")});
        p.procedimiento("TRU_IN_SERVICIOS_USDT", {Valor("USDT NUEVO"), Valor(9.0)});
        p.procedimiento("TRU_MOD_servicios_USDT", {Valor(56), Valor("SOLES PERU"), Valor("3,85"), Valor("3,9"), Valor(1)});
        p.procedimiento("TRU_MOD_servicios_USDT", {Valor(2), Valor("USDT BASE"), Valor("372,80"), Valor("0")});

        // The rates: the plain dollar with a point, the wallets and services with
        // a comma, an empty amount that keeps the stored rate.
        const QDateTime momento(QDate(2026, 11, 20), QTime(9, 30, 15));
        p.procedimiento("TRU_UPDATE_DOLAR", {Valor(momento), Valor("380.50")});
        p.procedimiento("TRU_UPDATE_DOLAR_01",
                        {Valor(momento), Valor("332,60"), Valor("343,57"), Valor("350,88"), Valor("310,67")});
        p.procedimiento("TRU_UPDATE_DOLAR_02", {Valor("1"), Valor("361,616")}); // the code as the rate panel sends it
        p.procedimiento("TRU_UPDATE_DOLAR_02", {Valor(2), Valor("")});
        p.procedimiento("TRU_UPDATE_DOLAR_02", {Valor(9), Valor("1.250,5")});
        p.procedimiento("TRU_UPDATE_DOLAR_03", {Valor("366,25")});
        for (const char* lectura :
             {"TRU_BANCOS", "TRU_CLIENTES", "TRU_CONCEPTOS", "TRU_BANCOS_ZELLE", "TRU_proveedor", "TRU_servicios",
              "TRU_servicios_USDT", "TRU_dolares", "TRU_PARAMETROS", "TRU_CARGA_TABLAS_03"})
            p.procedimiento(lectura, {});
        p.consulta(QStringLiteral(" select * from dolar"));
        p.consulta(QStringLiteral(" select * from dolar_NEW"));

        // A picture stored and read back byte for byte, and one replaced.
        QFile png(QStringLiteral(CARPETA_BD "/fotos/revision.png"));
        QVERIFY(png.open(QIODevice::ReadOnly));
        const QByteArray foto = png.readAll();
        p.procedimiento("TRU_IN_FOTOS", {Valor(12), Valor(foto)});
        p.procedimiento("TRU_IN_FOTOS", {Valor(12), Valor(foto.left(foto.size() - 7))});
        p.procedimiento("TRU_IN_FOTOS", {Valor(14), Valor(QByteArray(1, '\0') + foto)});
        // A camera's picture: far larger than a text column or a driver's default chunk.
        QByteArray grande(600000, '\0');
        QRandomGenerator(2031).fillRange(reinterpret_cast<quint32*>(grande.data()), grande.size() / 4);
        p.procedimiento("TRU_IN_FOTOS", {Valor(15), Valor(grande)});
        for (const char* cliente : {"'0012'", "14", "15"})
            p.consulta(QStringLiteral("select top 1 * from fotos where cliente = ") + QLatin1String(cliente));

        for (const auto& [tabla, orden] :
             {std::pair {"bancos", "C_Banco"}, std::pair {"clientes", "C_CLIENTE"}, std::pair {"conceptos", "C_CONCEPTO"},
              std::pair {"proveedor", "C_proveedor"}, std::pair {"servicios", "C_SERVIcio"},
              std::pair {"servicios_usdt", "C_SERVIcio"}, std::pair {"bancos_zelle", "C_Banco"}, std::pair {"fotos", "cliente"}})
            p.filas(QLatin1String(tabla), QStringLiteral("1 = 1"), QLatin1String(orden));
        informar(p.cuenta);
    }

    // The raw changes: a run of new transactions, each console's saves, the
    // provider's gift in its two forms, a delete; the rows compared after each.
    void cambiosCrudos()
    {
        Pareja p(*ServidorTsql::instancia());
        const QString fecha = QStringLiteral("20300115");
        p.delDia(alta(fecha, 1, QStringLiteral("uno")) + alta(fecha, 2, QStringLiteral("dos ñandú €")) +
                     alta(fecha, 3, QStringLiteral("tres")),
                 3, fecha);
        // A key already taken goes in under the next free sequence.
        p.delDia(alta(fecha, 2, QStringLiteral("repetida")), 1, fecha);
        p.procedimiento("TRU_Prepara", {Valor(fecha)});

        const QString ganancias = QStringLiteral(" g1 =  '4.01', g2 =  '2.4', g3 =  '1.61',");
        const QString pagoDelDia = QStringLiteral(
            " fecha_pago =  '20300116', hora_pago =  '10:15:00', dolar1 =  '365.5', dolar2 =  '372.8',");
        const QString zelle = QStringLiteral(" bancozelle =  '3',");
        int secuencia = 0;
        for (const QString& resto : {QString(), ganancias, ganancias + zelle, ganancias + pagoDelDia + zelle})
            p.delDia(guardado(fecha, ++secuencia, resto), 1, fecha);
        p.delDia(guardado(fecha, 1, ganancias) + guardado(fecha, 2, ganancias + pagoDelDia + zelle), 2, fecha);
        // A returned row's empty gains, and an amount dotted with thousands
        // marks, which neither server takes for a number.
        QString devuelta = guardado(fecha, 3, ganancias);
        devuelta.replace(QStringLiteral("C_BANCO =  '0134'"), QStringLiteral("C_BANCO =  '7777'"))
            .replace(QStringLiteral("g1 =  '4.01'"), QStringLiteral("g1 =  ''"))
            .replace(QStringLiteral("'94.3'"), QStringLiteral("'1.234.50'"));
        p.delDia(devuelta, 1, fecha);

        p.cambio(QStringLiteral(
                     " UPDATE proveedor SET  regalo = regalo +  ' 5.6605', ultregalo =  ' 5.6605' WHERE C_proveedor =  '3'"),
                 1, QStringLiteral("proveedor"), QStringLiteral("C_proveedor = 3"), QStringLiteral("C_proveedor"));
        p.cambio(QStringLiteral(" UPDATE proveedor SET  regalo = regalo -  '-2'  WHERE C_proveedor =  '0004'"), 1,
                 QStringLiteral("proveedor"), QStringLiteral("C_proveedor = 4"), QStringLiteral("C_proveedor"));
        p.delDia(QStringLiteral("delete movimientos where  fecha = '%1' and secuencia =  0002").arg(fecha), 1, fecha);
        p.procedimiento("TRU_CONSULTA_1127", {Valor(fecha), Valor(fecha), Valor(0), Valor(0), Valor(""), Valor(""), Valor(0)});
        p.procedimiento("TRU_CONSULTA_PAGO_250320", {Valor(QStringLiteral("20300116")), Valor(QStringLiteral("20300116")),
                                                     Valor(0), Valor(0), Valor(""), Valor(""), Valor(0)});
        p.procedimiento("TRU_NewCalk_02_250320", {Valor(QStringLiteral("203001")), Valor(0), Valor(0)});

        informar(p.cuenta);
    }

    // The statistics of a month whose banks carry blanks, read for the month
    // and for the month typed with one digit: the same on both servers (their
    // figures: tests/statistics, bancos_en_blanco_devoluciones_y_dias_sin_dolares).
    void estadisticasConBlancos()
    {
        Pareja p(*ServidorTsql::instancia());
        const QString fecha = QStringLiteral("20310310");
        QString altas;
        for (int n = 1; n <= 6; ++n)
            altas += alta(fecha, n, QStringLiteral("blancos"));
        p.delDia(altas, 6, fecha);
        const QString ganancias = QStringLiteral(" g1 =  '4.01', g2 =  '2.4', g3 =  '1.61',");
        int secuencia = 1; // the first stays unpaid
        for (const char* banco : {" 0134", "0134 ", "0134", " 7777", "7777 "})
            p.delDia(
                guardado(fecha, ++secuencia, ganancias)
                    .replace(QStringLiteral("C_BANCO =  '0134'"), QStringLiteral("C_BANCO =  '%1'").arg(QLatin1String(banco))),
                1, fecha);
        for (const char* periodo : {"203103", "20313"}) {
            p.procedimiento("TRU_NewCalk_02_250320", {Valor(periodo), Valor(0), Valor(0)});
            p.procedimiento("TRU_NewCalk_02_USDT", {Valor(periodo), Valor(0), Valor(0)});
        }
        p.procedimiento("TRU_NewCalk_03_250320", {Valor("2031"), Valor(0), Valor(0)});
        informar(p.cuenta);
    }

    // A batch whose last statements fail at the server (a text longer than
    // its column) keeps none of the others on either server (the embedded one
    // alone: tst_embebido), and the next batch is written.
    void unLoteEsTodoONada()
    {
        Pareja p(*ServidorTsql::instancia());
        const QString fecha = QStringLiteral("20310101");
        p.delDia(alta(fecha, 1, QStringLiteral("una")), 1, fecha);
        const QString largo = QString(501, QLatin1Char('n')); // obs holds 500, REFERENCIA 50
        p.delDia(alta(fecha, 2, QStringLiteral("dos")) + alta(fecha, 3, largo), 2, fecha, true);
        p.delDia(alta(fecha, 2, QStringLiteral("dos")) + alta(fecha, 3, QStringLiteral("tres")), 2, fecha);
        p.delDia(guardado(fecha, 1, QString()) + guardado(fecha, 2, QString(), QStringLiteral("x"), largo.left(51)), 2, fecha, true);
        p.delDia(guardado(fecha, 1, QString()) + guardado(fecha, 2, QString()), 2, fecha);
        informar(p.cuenta);
    }

    // A text as long as its column, in the accents and signs of SQL Server's
    // code page (Windows-1252), is kept alike on both servers, new or saved,
    // each character counting one, and read back whole through each backend
    // as the consoles read it; one character more is refused on both.
    void textosAlLargoDeSuColumna()
    {
        ServidorTsql& tsql = *ServidorTsql::instancia();
        const QString fecha = QStringLiteral("20310102");
        const QString signos = QStringLiteral("“EL GÜERO” – 50 € • Œuvre ™ ‰ JOSÉ PEÑA");
        const char* columnas[] = {"obs", "REFERENCIA", "operadora", "bancozelle"};
        const QStringList justos = {QString(499, QChar(u'ñ')) + QStringLiteral("€"), signos.leftJustified(50, QChar(u'É')),
                                    QStringLiteral("ÁÉÍÓÚ"), QStringLiteral("ZELLÉ")};
        const auto guardar = [&](const QStringList& t) {
            return guardado(fecha, 1, QStringLiteral(" g1 =  '4.01', g2 =  '2.4', g3 =  '1.61', bancozelle =  '%1',").arg(t[3]),
                            t[0], t[1], t[2]);
        };
        for (bool sqlServer : {true, false}) {
            const std::unique_ptr<Servidor> lado = sqlServer ? tsql.sqlServer() : tsql.embebido();
            const QByteArray nombre = sqlServer ? "SQL Server" : "embedded";
            const auto comoLosJustos = [&] {
                for (int i = 0; i < 4; ++i)
                    if (!guarda(sqlServer, fecha, columnas[i], justos[i]))
                        return false;
                return true;
            };
            lado->ejecutar(alta(fecha, 1, justos[0]));
            QVERIFY2(guarda(sqlServer, fecha, "obs", justos[0]), nombre.constData());
            lado->ejecutar(guardar(justos));
            QVERIFY2(comoLosJustos(), nombre.constData());
            const Resultados leidas = lado->procedimiento(
                QStringLiteral("TRU_CONSULTA_1127"),
                {Valor(fecha), Valor(fecha), Valor(0), Valor(0), Valor(""), Valor(""), Valor(0)});
            for (int i = 0; i < 4; ++i)
                QCOMPARE(campo(leidas, columnas[i]), justos[i]);
            for (int i = 0; i < 4; ++i) {
                QStringList largos = justos;
                largos[i] += QLatin1Char('x');
                QString rechazo;
                try {
                    lado->ejecutar(guardar(largos));
                } catch (const FalloEjecucion& f) {
                    rechazo = f.numero() == FalloEjecucion::servidor({}).numero() ? f.texto() : QStringLiteral("otro fallo");
                }
                QVERIFY2(!rechazo.isEmpty() && rechazo != QLatin1String("otro fallo"), (nombre + ' ' + columnas[i]).constData());
                std::printf("%s, %s de un carácter de más: \"%s\"\n", nombre.constData(), columnas[i], qPrintable(rechazo));
                QVERIFY2(comoLosJustos(), nombre.constData());
            }
        }
    }

    // The rows of 2031 go on both servers.
    void cleanupTestCase()
    {
        const QString sql = QStringLiteral("DELETE FROM MOVIMIENTOS WHERE FECHA LIKE '2031%'");
        QCOMPARE(ServidorTsql::instancia()->admin(sql), QString());
        ServidorTsql::instancia()->gemelo().sql(sql);
    }

    // The clock step's reading: the server's time, through the guard, as LOGIN
    // reads it; the test server runs on this machine, so the two agree.
    void laHoraDelServidor()
    {
        SesionDePrueba s(ServidorTsql::instancia()->cadenaTrumin());
        const QDateTime antes = QDateTime::currentDateTime();
        s.m->Hora_Servidor();
        const QDateTime despues = QDateTime::currentDateTime();
        const QDateTime servidor = QDateTime::fromString(s.m->Ahora_Texto, QStringLiteral("dd/MM/yyyy HH:mm:ss"));
        QVERIFY2(servidor.isValid(), qPrintable(s.m->Ahora_Texto));
        QCOMPARE(QDateTime(QDate(s.m->Ano_S, s.m->Mes_S, s.m->Dia_S), QTime(s.m->Hora_S, s.m->Minuto_S, s.m->Segundo_S)),
                 servidor);
        QVERIFY2(servidor.secsTo(antes) <= 3 && despues.secsTo(servidor) <= 3, qPrintable(s.m->Ahora_Texto));
    }
};

REGISTRAR_PRUEBA(PruebaProcedimientos);
#include "tst_procedimientos.moc"
