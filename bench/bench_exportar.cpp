// The export of the transaction console's grid: with 100,000 transactions
// loaded, the time to write its sheet as an Excel workbook and as text
// separated by semicolons, the size of each file, and the peak memory of the
// process.
//
//   bench_exportar           100,000 transactions
//   bench_exportar 10000     the totals given instead
#include "consola.h"
#include "exportar.h"
#include "form2.h"
#include "medicion.h"
#include "movimientos_consola.h"

#include <QDateEdit>
#include <QFileInfo>
#include <QPushButton>
#include <QTemporaryDir>

namespace {

using namespace movimientos_de_consola;

void medir(int total)
{
    QTemporaryDir dir;
    const QString archivo = dir.filePath(QStringLiteral("consola.db"));
    llenar(archivo, total);

    SesionDeMedicion s(archivo);
    auto* p = s.mostrar<Form2>("Form2");
    p->Fecha1->setDate(kPrimerDia);
    p->Fecha2->setDate(kPrimerDia.addDays(kDias - 1));
    p->SELECCIONA->click();
    QCoreApplication::processEvents();
    const int filas = p->Celdas.UpperBound(1) + 1;
    const double picoCarga = picoDeMemoriaMB();

    const QString libro = dir.filePath(p->GRID->nombreArchivo() + QStringLiteral(".xlsx"));
    const QString texto = dir.filePath(p->GRID->nombreArchivo() + QStringLiteral(".csv"));
    QString razon;
    const double msLibro = medianaDe(3, [&] { razon += Exportar::Libro(p->GRID->hojas(), libro); });
    const double msTexto = medianaDe(3, [&] { razon += Exportar::Texto_Separado(*p->GRID, texto); });
    if (!razon.isEmpty())
        std::fprintf(stderr, "%s\n", qPrintable(razon));
    std::printf("%7d transacciones (%d filas de %zu columnas): libro .xlsx %.0f ms, %.1f MB; texto .csv %.0f ms, %.1f MB;"
                " pico de memoria %.0f MB (%.0f MB tras la consulta)\n",
                total, filas, p->GRID->columnasVistas().size(), msLibro, QFileInfo(libro).size() / 1048576.0, msTexto,
                QFileInfo(texto).size() / 1048576.0, picoDeMemoriaMB(), picoCarga);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv) { return medirCon(argc, argv, {100000}, medir); }
