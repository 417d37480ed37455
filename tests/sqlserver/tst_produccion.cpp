// The production server as the counters use it, beside the embedded one on
// the same rows: a batch of new or saved transactions is all or nothing on
// both, the statement guard stands in front of SQL Server too, a text that
// SQL Server's code page cannot hold is refused on both instead of being
// kept as '?', the texts at their columns' lengths are kept alike and one
// character more is refused, and the server's clock is read through the guard.
#include "conexion.h"
#include "fallo.h"
#include "prueba.h"
#include "sesion.h"
#include "tsql.h"

#include <cstdio>
#include <functional>

namespace {

const long kServidor = FalloEjecucion::servidor({}).numero();

// A day of its own, far from the demo's rows and from the other tests'.
const QString kDia = QStringLiteral("20310101");

// A new transaction as the entry screens send it, with its note.
QString alta(int secuencia, const QString& obs = QStringLiteral("nota"))
{
    return QStringLiteral(" INSERT INTO MOVIMIENTOS VALUES ('%1','%2','0012','10','9.5','0','0','','','0','1',2,'1',"
                          "0,'',0,0,'',100,'%3','9.5','9.5',0,'','',0,0,'B')")
        .arg(kDia, QStringLiteral("%1").arg(secuencia, 4, 10, QLatin1Char('0')), obs);
}

// The free texts of a console's save.
struct Textos {
    QString obs = QStringLiteral("x");
    QString referencia;
    QString operadora = QStringLiteral("1");
    QString zelle = QStringLiteral("B");
};

Textos conNota(const QString& obs, const QString& referencia = {})
{
    Textos t;
    t.obs = obs;
    t.referencia = referencia;
    return t;
}

// A console's plain save of one row.
QString guardado(int secuencia, const Textos& t = {})
{
    return QStringLiteral(" UPDATE MOVIMIENTOS SET  recibido =  '9.5', enviado =  '10', C_CLIENTE =  '0012', obs =  '%1',"
                          " C_PROVEEDOR =  '0000', pago =  '0', C_BANCO =  '', operadora =  '%3', REFERENCIA =  '%2',"
                          " confirmacion =  '0', tipo_operacion =  '2', ganancia =  '100', g1 =  '9.5', g2 =  '9.5',"
                          " g3 =  '0', bancozelle =  '%4', tipo_servicio =  '1' WHERE FECHA=  '%5' and SECUENCIA = '%6'")
        .arg(t.obs, t.referencia, t.operadora, t.zelle, kDia, QString::number(secuencia));
}

// One of the two servers: the program's backend on it, its rows of the test
// day, and a connection of the program's contract for procedure calls.
struct Lado {
    QString nombre;
    std::unique_ptr<Servidor> servidor;
    std::function<QStringList()> filas;
    QString cadena;
    std::function<QString(const QString&)> valor; // one value of a select, read past the program
};

std::vector<Lado> lados()
{
    ServidorTsql& s = *ServidorTsql::instancia();
    const QString movimientos = QStringLiteral("MOVIMIENTOS WHERE FECHA = '%1'").arg(kDia);
    const QString archivo = s.gemelo().archivo();
    std::vector<Lado> r;
    r.push_back({QStringLiteral("SQL Server"), s.sqlServer(),
                 [&s, movimientos] { return s.tablaSqlServer(movimientos, QStringLiteral("SECUENCIA")); },
                 s.cadenaTrumin(), [&s](const QString& sql) {
                     const QList<QStringList> f = s.filas(sql);
                     return f.isEmpty() ? QString() : f[0][0];
                 }});
    r.push_back({QStringLiteral("embebido"), s.embebido(),
                 [archivo, movimientos] { return ServidorTsql::tablaEmbebida(archivo, movimientos, QStringLiteral("SECUENCIA")); },
                 s.gemelo().cadenaConexion(), [archivo](const QString& sql) { return BaseTemporal::valorDe(archivo, sql); }});
    return r;
}

// True when the test day's first row holds exactly this text in the column.
// SQL Server compares it itself (accents count, capitals not): the test
// server keeps varchar as UTF-8 and a long accented text does not come back
// whole through ODBC, while it is stored whole.
bool guarda(const Lado& l, const char* columna, const QString& texto)
{
    const QString donde = QStringLiteral(" FROM MOVIMIENTOS WHERE FECHA = '%1' AND SECUENCIA = 1").arg(kDia);
    if (l.nombre != QLatin1String("SQL Server"))
        return l.valor(QStringLiteral("SELECT %1").arg(QLatin1String(columna)) + donde) == texto;
    return l.valor(QStringLiteral("SELECT CASE WHEN %1 = N'%2' AND LEN(%1) = %3 THEN 'si' ELSE 'no' END")
                       .arg(QLatin1String(columna), QString(texto).replace(QLatin1Char('\''), QStringLiteral("''")))
                       .arg(texto.size())
                   + donde)
        == QLatin1String("si");
}

// The failure of a call: its number and text; no number when it went through.
struct Fallo {
    long numero = 0;
    QString texto;
};

Fallo intentar(const std::function<void()>& llamada)
{
    try {
        llamada();
        return {};
    } catch (const FalloEjecucion& f) {
        return {f.numero(), f.texto()};
    }
}

// The word of a refusal for a character outside the code page.
QString sinGuardar(const QString& caracter)
{
    return QStringLiteral("tiene el carácter '%1', que la base de datos no puede guardar.").arg(caracter);
}

} // namespace

class PruebaProduccion : public QObject {
    Q_OBJECT
private slots:
    // Each test starts from a test day without rows on both servers and leaves none.
    void init() { borrarElDia(); }
    void cleanup() { borrarElDia(); }

    void unLoteEsTodoONada()
    {
        const QString largo = QString(501, QLatin1Char('n')); // obs holds 500
        for (Lado& l : lados()) {
            const QByteArray donde = l.nombre.toUtf8();
            // A run of new transactions whose third fails at the server.
            const Fallo altas = intentar([&] { l.servidor->ejecutar(alta(1) + alta(2) + alta(3, largo) + alta(4), 4); });
            QVERIFY2(altas.numero == kServidor && !altas.texto.isEmpty(), donde.constData());
            QVERIFY2(l.filas().isEmpty(), qPrintable(l.nombre + ": " + l.filas().join(QLatin1Char('\n'))));

            // A good run and a good single statement are written.
            l.servidor->ejecutar(alta(1) + alta(2) + alta(3), 3);
            l.servidor->ejecutar(alta(4));
            const QStringList nuevas = l.filas();
            QCOMPARE(nuevas.size(), 4);

            // A run of saves whose third fails: the first two are not kept.
            const Textos bien = conNota(QStringLiteral("guardada"));
            const Textos referenciaLarga = conNota(QStringLiteral("x"), QString(51, QLatin1Char('R')));
            const Fallo guardados = intentar(
                [&] { l.servidor->ejecutar(guardado(1, bien) + guardado(2, bien) + guardado(3, referenciaLarga) + guardado(4, bien), 4); });
            QVERIFY2(guardados.numero == kServidor && !guardados.texto.isEmpty(), donde.constData());
            QCOMPARE(l.filas(), nuevas);

            // A good run of saves is written, and so is a single one after it.
            l.servidor->ejecutar(guardado(1, bien) + guardado(2, bien), 2);
            l.servidor->ejecutar(guardado(3, conNota(QStringLiteral("sola"))));
            QCOMPARE(l.valor(QStringLiteral("SELECT COUNT(*) FROM MOVIMIENTOS WHERE FECHA = '%1' AND obs = 'guardada'").arg(kDia)),
                     QStringLiteral("2"));
            QCOMPARE(l.valor(QStringLiteral("SELECT obs FROM MOVIMIENTOS WHERE FECHA = '%1' AND SECUENCIA = 3").arg(kDia)),
                     QStringLiteral("sola"));
            std::printf("%s, lote con un fallo: \"%s\" / \"%s\"\n", donde.constData(), qPrintable(altas.texto), qPrintable(guardados.texto));
        }
        // The two servers ended with the same rows.
        std::vector<Lado> l = lados();
        QCOMPARE(l[0].filas(), l[1].filas());
    }

    // Typed texts that would make another statement or condition of the
    // program's own ones are refused before they reach SQL Server; nothing changes.
    void laGuardiaDelanteDeSqlServer()
    {
        ServidorTsql& s = *ServidorTsql::instancia();
        std::unique_ptr<Servidor> trumin = s.sqlServer();
        trumin->ejecutar(alta(1) + alta(2), 2);
        const auto todo = [&s] {
            return s.tablaSqlServer(QStringLiteral("MOVIMIENTOS"), QStringLiteral("FECHA, SECUENCIA"))
                + s.tablaSqlServer(QStringLiteral("proveedor"), QStringLiteral("C_proveedor"));
        };
        const QStringList antes = todo();
        // A note that closes this row's save and saves the other row.
        const QString resto = guardado(1).section(QStringLiteral("obs =  'x'"), 1);
        const QString cabeza = guardado(2).section(QStringLiteral("obs =  'x'"), 0, 0) + QStringLiteral("obs =  'y");
        const QString cambios[] = {
            alta(3, QStringLiteral("x','1','1',0,'','',0,0,'0') DELETE MOVIMIENTOS WHERE 1=1 OR obs IN ('")),
            guardado(1, conNota(QStringLiteral("x' WHERE 1=1 UPDATE MOVIMIENTOS SET obs = 'x"))),
            guardado(1, conNota(QStringLiteral("x', pago = '0"))),
            // the joining text between two quotes lands in the provider's code
            guardado(1, conNota(QStringLiteral("x' , C_PROVEEDOR ="), QStringLiteral("' y"))),
            guardado(2, conNota(QStringLiteral("x'") + resto + cabeza)), // a whole second save, where the screen built one
            guardado(1) + QStringLiteral(" OR 1=1"),
            QString(guardado(1)).replace(QStringLiteral("'0012'"), QStringLiteral("'0012' -- '")),
            guardado(1) + QStringLiteral("; DROP TABLE MOVIMIENTOS"),
            QString(guardado(1)).replace(QStringLiteral("obs =  'x'"), QStringLiteral("obs =  N'x'")),
            QString(guardado(1)).replace(QStringLiteral("MOVIMIENTOS"), QStringLiteral("[MOVIMIENTOS]")),
            QString(guardado(1)).replace(QStringLiteral("SET"), QStringLiteral("S\u0395T")),
            QStringLiteral("delete movimientos where  fecha = '%1' and secuencia =  1 or 1 = 1").arg(kDia),
            QStringLiteral(" UPDATE proveedor SET  regalo = regalo -  '1'  WHERE C_proveedor =  '3' or 1 = 1"),
            QStringLiteral(" UPDATE proveedor SET  regalo = regalo -  '1'  WHERE C_proveedor =  '3 or 1=1'"),
            QStringLiteral("DROP TABLE MOVIMIENTOS"),
        };
        for (const QString& sql : cambios) {
            const Fallo f = intentar([&] { trumin->ejecutar(sql); });
            QVERIFY2(f.numero == kServidor, qPrintable(sql + QStringLiteral(" -> ") + (f.numero ? f.texto : QStringLiteral("accepted"))));
        }
        for (const char* consulta : {"select * from MOVIMIENTOS", "select * from fotos where cliente = 1 or 1 = 1",
                                     "select * from fotos where cliente = 1 union select * from fotos where cliente = 2",
                                     "SELECT FECHA=GETDATE(); DELETE MOVIMIENTOS"}) {
            const Fallo f = intentar([&] { trumin->abrirConsulta(QString::fromLatin1(consulta)); });
            QVERIFY2(f.numero == kServidor, consulta);
        }
        QCOMPARE(todo(), antes);
    }

    // Characters beyond Windows-1252 are refused on both servers, in a raw
    // save, a raw new transaction and a procedure's text, naming the
    // character; nothing is written. Those of Windows-1252 are kept as typed.
    void textosQueLaBaseNoPuedeGuardar()
    {
        const QString kept = QStringLiteral("JOSÉ PEÑA “EL GÜERO” – 50 € • Œuvre ™ ‰");
        for (Lado& l : lados()) {
            const QByteArray donde = l.nombre.toUtf8();
            l.servidor->ejecutar(alta(1));
            const QStringList antes = l.filas();
            for (const QString& caracter : {QStringLiteral("ğ"), QStringLiteral("漢"), QStringLiteral("😀"), QStringLiteral("Ā")}) {
                const Textos t = conNota(QStringLiteral("Pago de Öz") + caracter + QStringLiteral("ür"));
                const Fallo guardar = intentar([&] { l.servidor->ejecutar(guardado(1, t)); });
                QCOMPARE(guardar.numero, kServidor);
                QVERIFY2(guardar.texto.contains(sinGuardar(caracter)) && guardar.texto.contains(t.obs), qPrintable(guardar.texto));
                const Fallo nueva = intentar([&] { l.servidor->ejecutar(alta(2) + alta(3, t.obs), 2); });
                QCOMPARE(nueva.numero, kServidor);
                QVERIFY2(nueva.texto.contains(sinGuardar(caracter)), qPrintable(nueva.texto));
                QCOMPARE(l.filas(), antes);
            }

            // A procedure's text, through the one command of the program.
            Conexion conexion;
            conexion.ConnectionString = l.cadena;
            conexion.Open();
            Comando comando;
            comando.ActiveConnection = &conexion;
            comando.CommandText = QStringLiteral("TRU_IN_CLIENTES_01");
            comando.Parameters(1) = Valor(QStringLiteral("AYŞE YILMAZ"));
            const QString clientes = QStringLiteral("SELECT COUNT(*) FROM clientes");
            const QString cuantos = l.valor(clientes);
            const Fallo cliente = intentar([&] { comando.Execute(); });
            QCOMPARE(cliente.numero, kServidor);
            QVERIFY2(cliente.texto.contains(sinGuardar(QStringLiteral("Ş"))), qPrintable(cliente.texto));
            QCOMPARE(l.valor(clientes), cuantos);
            // A search with the code page's letters goes through.
            comando.CommandText = QStringLiteral("TRU_Busca_CLIENTES");
            comando.Parameters(1) = Valor(QStringLiteral("PEÑA €"));
            const Fallo busqueda = intentar([&] { comando.Execute(); });
            QVERIFY2(busqueda.numero == 0, qPrintable(l.nombre + QStringLiteral(": ") + busqueda.texto));
            conexion.Close();

            l.servidor->ejecutar(guardado(1, conNota(kept)));
            QCOMPARE(l.valor(QStringLiteral("SELECT obs FROM MOVIMIENTOS WHERE FECHA = '%1' AND SECUENCIA = 1").arg(kDia)), kept);
        }
        std::vector<Lado> l = lados();
        QCOMPARE(l[0].filas(), l[1].filas());
    }

    // A text as long as its column is kept alike on both servers, accented
    // letters counting one each; one character more is refused on both.
    void textosAlLargoDeSuColumna()
    {
        const Textos justos{QString(499, QChar(u'ñ')) + QStringLiteral("€"), QString(50, QChar(u'É')), QStringLiteral("ÁÉÍÓÚ"),
                            QStringLiteral("ZELLÉ")};
        const struct {
            const char* columna;
            QString Textos::*campo;
        } columnas[] = {{"obs", &Textos::obs}, {"REFERENCIA", &Textos::referencia}, {"operadora", &Textos::operadora},
                        {"bancozelle", &Textos::zelle}};
        for (Lado& lado : lados()) {
            lado.servidor->ejecutar(alta(1));
            lado.servidor->ejecutar(guardado(1, justos));
            const auto comoLosJustos = [&] {
                for (const auto& c : columnas)
                    if (!guarda(lado, c.columna, justos.*c.campo))
                        return false;
                return true;
            };
            QVERIFY2(comoLosJustos(), qPrintable(lado.nombre));
            for (const auto& c : columnas) {
                Textos largos = justos;
                (largos.*c.campo) += QLatin1Char('x');
                const Fallo f = intentar([&] { lado.servidor->ejecutar(guardado(1, largos)); });
                QVERIFY2(f.numero == kServidor, qPrintable(lado.nombre + QLatin1Char(' ') + QLatin1String(c.columna) + QStringLiteral(" -> ")
                                                           + (f.numero ? f.texto : QStringLiteral("accepted"))));
                std::printf("%s, %s de un carácter de más: \"%s\"\n", qPrintable(lado.nombre), c.columna, qPrintable(f.texto));
                QVERIFY2(comoLosJustos(), qPrintable(lado.nombre));
            }
        }
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
        QCOMPARE(QDateTime(QDate(s.m->Ano_S, s.m->Mes_S, s.m->Dia_S), QTime(s.m->Hora_S, s.m->Minuto_S, s.m->Segundo_S)), servidor);
        std::printf("Hora del servidor %s; esta máquina %s\n", qPrintable(s.m->Ahora_Texto),
                    qPrintable(despues.toString(QStringLiteral("dd/MM/yyyy HH:mm:ss.zzz"))));
        QVERIFY2(servidor.secsTo(antes) <= 3 && despues.secsTo(servidor) <= 3, qPrintable(s.m->Ahora_Texto));
    }

private:
    static void borrarElDia()
    {
        ServidorTsql& s = *ServidorTsql::instancia();
        QCOMPARE(s.admin(QStringLiteral("DELETE FROM dbo.MOVIMIENTOS WHERE FECHA = '%1'").arg(kDia)), QString());
        s.gemelo().sql(QStringLiteral("DELETE FROM MOVIMIENTOS WHERE FECHA = '%1'").arg(kDia));
    }
};

REGISTRAR_PRUEBA(PruebaProduccion);
#include "tst_produccion.moc"
