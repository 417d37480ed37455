// The transaction console with many rows: for 10,000 and 100,000 transactions
// in one date range, the time of one query from the click to the bound grid,
// the time of reading the same rows straight from SQLite, their ratio, and the
// peak memory of the process.
//
//   bench_consola            builds the two databases and prints the figures
#include "consola.h"
#include "form2.h"
#include "medicion.h"
#include "movimientos_consola.h"

#include <QDateEdit>
#include <QPushButton>
#include <QTemporaryDir>

namespace {

using namespace movimientos_de_consola;

// The same rows and columns read straight from the file, every value touched.
double lecturaDirecta(const QString& archivo, int& filas)
{
    sqlite3* bd = nullptr;
    sqlite3_open_v2(archivo.toUtf8().constData(), &bd, SQLITE_OPEN_READONLY, nullptr);
    // The page settings of the program's own connection.
    sqlite3_exec(bd, "PRAGMA mmap_size=268435456; PRAGMA cache_size=-32768", nullptr, nullptr, nullptr);
    QElapsedTimer t;
    t.start();
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(bd,
                       "SELECT m.FECHA, m.SECUENCIA, m.C_CLIENTE, c.D_cliente, m.enviado, m.recibido, m.C_PROVEEDOR,"
                       " m.bancozelle, m.tipo_servicio, m.C_BANCO, m.confirmacion, m.pago, m.REFERENCIA, m.operadora,"
                       " m.tipo_operacion, m.obs, m.ganancia, m.g1, m.g2, m.g3, m.fecha_pago, m.hora_pago, m.dolar1,"
                       " m.dolar2 FROM MOVIMIENTOS m LEFT JOIN clientes c ON c.C_CLIENTE = m.C_CLIENTE"
                       " WHERE m.FECHA BETWEEN ?1 AND ?2 ORDER BY m.FECHA, m.SECUENCIA",
                       -1, &st, nullptr);
    const QByteArray desde = kPrimerDia.toString(QStringLiteral("yyyyMMdd")).toUtf8();
    const QByteArray hasta = kPrimerDia.addDays(kDias - 1).toString(QStringLiteral("yyyyMMdd")).toUtf8();
    sqlite3_bind_text(st, 1, desde.constData(), -1, SQLITE_STATIC);
    sqlite3_bind_text(st, 2, hasta.constData(), -1, SQLITE_STATIC);
    filas = 0;
    size_t bytes = 0;
    while (sqlite3_step(st) == SQLITE_ROW) {
        ++filas;
        for (int c = 0; c < sqlite3_column_count(st); ++c) {
            if (sqlite3_column_type(st, c) == SQLITE_TEXT)
                bytes += size_t(sqlite3_column_bytes(st, c));
            else
                bytes += size_t(sqlite3_column_double(st, c) != 0);
        }
    }
    sqlite3_finalize(st);
    const double ms = t.nsecsElapsed() / 1e6;
    sqlite3_close(bd);
    return bytes ? ms : -1;
}

void medir(int total)
{
    QTemporaryDir dir;
    const QString archivo = dir.filePath(QStringLiteral("consola.db"));
    llenar(archivo, total);

    std::vector<double> directas;
    int filasDirectas = 0;
    for (int i = 0; i < 3; ++i)
        directas.push_back(lecturaDirecta(archivo, filasDirectas));

    double consulta = 0, procedimiento = 0, pico = 0;
    int filas = 0;
    {
        SesionDeMedicion s(archivo);
        auto* p = s.mostrar<Form2>("Form2");
        p->Fecha1->setDate(kPrimerDia);
        p->Fecha2->setDate(kPrimerDia.addDays(kDias - 1));
        consulta = medianaDe(5, [p] {
            p->SELECCIONA->click();
            QCoreApplication::processEvents(); // the grid shows its rows
        });
        filas = p->Celdas.UpperBound(1) + 1;
        pico = picoDeMemoriaMB(); // the console's, before the procedure alone fetches the rows once more

        // The server's part alone: the procedure with the same values, fully fetched.
        const std::vector<Parametro> valores {Valor(kPrimerDia.toString(QStringLiteral("yyyyMMdd"))),
                                              Valor(kPrimerDia.addDays(kDias - 1).toString(QStringLiteral("yyyyMMdd"))),
                                              Valor(0),
                                              Valor(0),
                                              Valor(QString()),
                                              Valor(QString()),
                                              Valor(0)};
        procedimiento = medianaDe(3,
                                  [&] { s.m.Conexion.servidor().procedimiento(QStringLiteral("TRU_CONSULTA_1127"), valores); });
    }
    const double directa = mediana(directas);
    std::printf("%7d transacciones (%d en la consola, %d leídas directas): CONSULTAR %.0f ms (el procedimiento solo %.0f ms),"
                " lectura directa %.0f ms, razón %.1f, pico de memoria %.0f MB\n",
                total, filas, filasDirectas, consulta, procedimiento, directa, consulta / directa, pico);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv) { return medirCon(argc, argv, {10000, 100000}, medir); }
