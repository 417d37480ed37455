// The administrator's deployment script on a running T-SQL server: it ran
// clean on a new server (the start of this program), runs clean again over an
// older database with the business's rows, and leaves TRUMIN with the rights
// the program needs and no more.
#include "prueba.h"
#include "sqlserver.h"
#include "tsql.h"

#include <QDir>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace {

QMap<QString, QStringList> todasLasTablas(const ServidorTsql& s)
{
    QMap<QString, QStringList> r;
    for (const auto& [tabla, orden] : ServidorTsql::tablas())
        r.insert(tabla, s.tablaSqlServer(tabla, orden));
    return r;
}

// The program's indexes of MOVIMIENTOS, each with how many columns it
// carries; one found twice stands twice. A server may keep a longer name of
// its own, which begins with the index's.
QStringList indices(const ServidorTsql& s)
{
    QStringList r;
    for (const char* nombre : {"movimientos_fecha_pago", "movimientos_estadistica", "movimientos_cliente",
                               "movimientos_proveedor", "movimientos_banco", "movimientos_servicio", "movimientos_directos"})
        for (const QStringList& f :
             s.filas(QStringLiteral("SELECT (SELECT COUNT(*) FROM sys.index_columns AS c WHERE c.object_id = i.object_id "
                                    "AND c.index_id = i.index_id AND c.is_included_column = 1) FROM sys.indexes AS i "
                                    "WHERE i.object_id = OBJECT_ID(N'dbo.MOVIMIENTOS') AND i.name LIKE N'%1%'")
                         .arg(QLatin1String(nombre))))
            r << QLatin1String(nombre) + QLatin1Char(':') + f[0];
    return r;
}

} // namespace

class PruebaDespliegue : public QObject {
    Q_OBJECT
private slots:
    // A second run over a database with the business's rows whose indexes by
    // client and provider are an older database's, without the columns they
    // now carry: every row kept, those two brought up to date, none of the
    // others made twice, every procedure, function and the trigger of the
    // source files there.
    void unaSegundaVezSobreUnaBaseAntigua()
    {
        ServidorTsql& s = *ServidorTsql::instancia();
        const QStringList completos = indices(s);
        QCOMPARE(completos.size(), 7);
        QCOMPARE(s.admin(QStringLiteral("DROP INDEX movimientos_cliente ON dbo.MOVIMIENTOS;"
                                        "DROP INDEX movimientos_proveedor ON dbo.MOVIMIENTOS;"
                                        "CREATE INDEX movimientos_cliente ON dbo.MOVIMIENTOS (C_CLIENTE, FECHA);"
                                        "CREATE INDEX movimientos_proveedor ON dbo.MOVIMIENTOS (C_PROVEEDOR, FECHA)")),
                 QString());
        QVERIFY(indices(s) != completos);
        const QMap<QString, QStringList> antes = todasLasTablas(s);
        QVERIFY(antes.value(QStringLiteral("MOVIMIENTOS")).size() > 3000);

        const QStringList fallos = s.desplegar();
        QVERIFY2(fallos.isEmpty(), qPrintable(fallos.join(QLatin1Char('\n'))));
        QCOMPARE(todasLasTablas(s), antes);
        QCOMPARE(indices(s), completos);
        int objetos = 0;
        for (const char* clase : {"funciones", "disparadores", "procedimientos"})
            for (const QString& archivo :
                 QDir(QStringLiteral(CARPETA_BD "/sqlserver/") + QLatin1String(clase)).entryList({QStringLiteral("*.sql")})) {
                QCOMPARE(s.filas(QStringLiteral("SELECT CASE WHEN OBJECT_ID(N'dbo.%1') IS NULL THEN 0 ELSE 1 END")
                                     .arg(QFileInfo(archivo).completeBaseName())),
                         QList<QStringList> {{QStringLiteral("1")}});
                ++objetos;
            }
        QCOMPARE(objetos, 46);
    }

    // TRUMIN reads, writes and runs the procedures; it cannot change the
    // schema nor the procedures, nor reach another database.
    void truminTieneLoQueNecesitaYNadaMas()
    {
        ServidorTsql& s = *ServidorTsql::instancia();
        DatosSqlServer d;
        d.servidor = QStringLiteral("127.0.0.1");
        d.puerto = s.puerto();
        d.clave = ServidorTsql::claveTrumin();
        const QString nombre = QStringLiteral("trumin-crudo");
        {
            QSqlDatabase bd = QSqlDatabase::addDatabase(QStringLiteral("QODBC"), nombre);
            bd.setDatabaseName(ServidorSqlServer::textoOdbc(d));
            QVERIFY2(bd.open(), qPrintable(bd.lastError().text()));
            const auto correr = [&bd](const char* sql) {
                QSqlQuery q(bd);
                q.setForwardOnly(true);
                const bool bien = q.exec(QString::fromUtf8(sql));
                while (bien && q.nextResult()) {}
                return bien && !q.lastError().isValid();
            };
            for (const char* permitida : {"SELECT COUNT(*) FROM dbo.clientes", "EXEC dbo.TRU_PARAMETROS",
                                          "INSERT INTO dbo.conceptos (C_CONCEPTO, D_CONCEPTO) VALUES (990, 'PRUEBA')",
                                          "UPDATE dbo.conceptos SET D_CONCEPTO = 'PRUEBA 2' WHERE C_CONCEPTO = 990",
                                          "DELETE FROM dbo.conceptos WHERE C_CONCEPTO = 990"})
                QVERIFY2(correr(permitida), permitida);
            for (const char* negada :
                 {"CREATE TABLE dbo.otra (a int)", "DROP PROCEDURE dbo.TRU_Prepara", "ALTER TABLE dbo.clientes ADD otra int NULL",
                  "DROP TABLE dbo.conceptos", "CREATE PROCEDURE dbo.TRU_Otro AS SELECT 1 AS uno"})
                QVERIFY2(!correr(negada), negada);
            bd.close();
        }
        QSqlDatabase::removeDatabase(nombre);
        QCOMPARE(s.filas(QStringLiteral("SELECT COUNT(*) FROM dbo.conceptos WHERE C_CONCEPTO = 990")),
                 QList<QStringList> {{QStringLiteral("0")}});
    }
};

REGISTRAR_PRUEBA(PruebaDespliegue);
#include "tst_despliegue.moc"
