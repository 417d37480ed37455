// The statistics over two years of business: for 100,000 and 1,000,000
// transactions spread over 2024 and 2025, the time of one Carga_Estadistica of
// a month (CALCULOS01, June 2025) and of a year (Resumen_mensual, 2025), from
// the click to the bound grids, the time of the procedure alone, the time of
// the same groupings read straight from SQLite, and the peak memory.
//
//   bench_estadisticas            builds the two databases and prints the figures
//   bench_estadisticas 100000     one size only
#include "calculos01.h"
#include "embebido.h"
#include "medicion.h"
#include "resumen_mensual.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>

namespace {

const QDate kPrimerDia(2024, 1, 1);
const int kDias = 731; // 2024 and 2025

// The demo's reference tables, and `total` transactions spread evenly over
// the two years: most paid (a tenth of them by direct transfer), some
// returned, the rest unpaid, of every kind of service, 4000 clients, 12
// providers, 8 banks, two operators.
double llenar(const QString& archivo, int total)
{
    ServidorEmbebido::crearBase(archivo, true);
    QElapsedTimer t;
    t.start();
    ejecutarEnArchivo(
        archivo,
        QStringLiteral(
            "BEGIN; DELETE FROM MOVIMIENTOS;"
            "WITH RECURSIVE n(k) AS (SELECT 0 UNION ALL SELECT k + 1 FROM n WHERE k < %1 - 1),"
            " f AS (SELECT k, strftime('%Y%m%d', date('%2', '+' || (k % %3) || ' days')) AS fecha, k / %3 + 1 AS sec,"
            "            (k * 2654435761) % 1000 AS x, (k * 40503) % 3999 AS y FROM n),"
            " g AS (SELECT f.*, CASE x % 7 WHEN 0 THEN 1 WHEN 1 THEN 2 WHEN 2 THEN 3 WHEN 3 THEN 4 WHEN 4 THEN 9"
            "                    WHEN 5 THEN 50 ELSE 55 END AS serv,"
            "              CASE WHEN x < 700 THEN printf('%04d', 102 + (x % 8) * 10) WHEN x < 720 THEN '7777'"
            "                   ELSE '' END AS banco FROM f)"
            "INSERT INTO MOVIMIENTOS SELECT fecha, sec, 1 + y, 20 + x, 18 + x * 0.9,"
            " CASE WHEN banco NOT IN ('', '7777') THEN 1 + x % 12 ELSE 0 END,"
            " CASE banco WHEN '' THEN 0 ELSE (18 + x * 0.9) * 330 END,"
            " banco, CASE banco WHEN '' THEN '' ELSE printf('%08d', x * 7919) END, CASE banco WHEN '' THEN 0 ELSE 330.5 END,"
            " CAST(1 + y % 2 AS TEXT), CASE WHEN y % 10 = 0 THEN 3 ELSE 2 END, serv, 0, '', 0, 0, '',"
            " CASE banco WHEN '' THEN 100 ELSE 5.5 END, '', 1.25, CASE banco WHEN '' THEN 18 + x * 0.9 ELSE 1.25 END, 0,"
            " CASE banco WHEN '' THEN '' ELSE fecha END, CASE banco WHEN '' THEN '' ELSE '10:20:30' END,"
            " 365.5, 372.8, '0' FROM g; COMMIT;")
            .arg(total)
            .arg(kPrimerDia.toString(QStringLiteral("yyyy-MM-dd")))
            .arg(kDias)
            .toUtf8());
    return t.nsecsElapsed() / 1e9;
}

// The six groupings of a period read straight from the file, with no filter
// but the period and the returned rows: what the procedure does at the least.
double lecturaDirecta(const QString& archivo, const QString& desde, const QString& hasta)
{
    sqlite3* bd = nullptr;
    sqlite3_open_v2(archivo.toUtf8().constData(), &bd, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_exec(bd, "PRAGMA mmap_size=268435456; PRAGMA cache_size=-32768", nullptr, nullptr, nullptr);
    static const char* const consultas[] = {
        "SELECT FECHA, total(recibido), count(*), total(g2) FROM MOVIMIENTOS WHERE FECHA BETWEEN ?1 AND ?2"
        " AND C_BANCO <> '7777' GROUP BY FECHA",
        "SELECT C_PROVEEDOR, total(recibido) FROM MOVIMIENTOS WHERE FECHA BETWEEN ?1 AND ?2 AND C_BANCO <> '7777'"
        " GROUP BY C_PROVEEDOR",
        "SELECT C_CLIENTE, total(recibido), count(*) FROM MOVIMIENTOS WHERE FECHA BETWEEN ?1 AND ?2"
        " AND C_BANCO <> '7777' GROUP BY C_CLIENTE",
        "SELECT C_BANCO, total(recibido) FROM MOVIMIENTOS WHERE FECHA BETWEEN ?1 AND ?2"
        " AND C_BANCO NOT IN ('', '7777') GROUP BY C_BANCO",
        "SELECT FECHA, total(recibido) FROM MOVIMIENTOS WHERE FECHA BETWEEN ?1 AND ?2 AND tipo_operacion = 3"
        " AND C_BANCO NOT IN ('', '7777') GROUP BY FECHA",
        "SELECT tipo_servicio, total(recibido) FROM MOVIMIENTOS WHERE FECHA BETWEEN ?1 AND ?2 AND C_BANCO <> '7777'"
        " GROUP BY tipo_servicio",
    };
    const QByteArray d = desde.toUtf8(), h = hasta.toUtf8();
    QElapsedTimer t;
    t.start();
    double suma = 0;
    for (const char* consulta : consultas) {
        sqlite3_stmt* st = nullptr;
        sqlite3_prepare_v2(bd, consulta, -1, &st, nullptr);
        sqlite3_bind_text(st, 1, d.constData(), -1, SQLITE_STATIC);
        sqlite3_bind_text(st, 2, h.constData(), -1, SQLITE_STATIC);
        while (sqlite3_step(st) == SQLITE_ROW)
            suma += sqlite3_column_double(st, 1);
        sqlite3_finalize(st);
    }
    const double ms = t.nsecsElapsed() / 1e6;
    sqlite3_close(bd);
    return suma != 0 ? ms : -1;
}

void medir(int total)
{
    QTemporaryDir dir;
    const QString archivo = dir.filePath(QStringLiteral("estadisticas.db"));
    const double creacion = llenar(archivo, total);

    const double directaMes = mediana({lecturaDirecta(archivo, "20250601", "20250631"),
                                       lecturaDirecta(archivo, "20250601", "20250631"),
                                       lecturaDirecta(archivo, "20250601", "20250631")});
    const double directaAno = mediana({lecturaDirecta(archivo, "20250101", "20251231"),
                                       lecturaDirecta(archivo, "20250101", "20251231"),
                                       lecturaDirecta(archivo, "20250101", "20251231")});

    SesionDeMedicion s(archivo);
    Module1& m = s.m;
    auto* mes = s.mostrar<CALCULOS01>("CALCULOS01");
    mes->Text1[1]->setText(QStringLiteral("2025"));
    mes->Text1[3]->setText(QStringLiteral("06"));
    const double cargaMes = medianaDe(5, [mes] {
        mes->CARGA_DATOS->click();
        QCoreApplication::processEvents(); // the grids show their rows
    });
    const int filasMes = mes->Celdas2.filas();
    const double procMes = medianaDe(5, [&m] {
        m.Conexion.servidor().procedimiento(QStringLiteral("TRU_NewCalk_02_250320"),
                                            {Valor(QStringLiteral("202506")), Valor(0), Valor(0)});
    });

    auto* ano = s.mostrar<Resumen_mensual>("Resumen_mensual");
    ano->Text1[1]->setText(QStringLiteral("2025"));
    const double cargaAno = medianaDe(5, [ano] {
        ano->CARGA_DATOS->click();
        QCoreApplication::processEvents();
    });
    const double procAno = medianaDe(5, [&m] {
        m.Conexion.servidor().procedimiento(QStringLiteral("TRU_NewCalk_03_250320"),
                                            {Valor(QStringLiteral("2025")), Valor(0), Valor(0)});
    });

    std::printf("%8d transacciones (base hecha en %.1f s):\n"
                "   mes  (junio 2025, %d clientes): Carga_Estadistica %.0f ms (procedimiento %.0f ms),"
                " agrupación directa %.0f ms\n"
                "   año  (2025):                   Carga_Estadistica %.0f ms (procedimiento %.0f ms),"
                " agrupación directa %.0f ms\n"
                "   pico de memoria %.0f MB\n",
                total, creacion, filasMes, cargaMes, procMes, directaMes, cargaAno, procAno, directaAno, picoDeMemoriaMB());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1)
        return medirCon(argc, argv, {QString::fromLatin1(argv[1]).toInt()}, medir);
    return medirCon(argc, argv, {100000, 1000000}, medir);
}
