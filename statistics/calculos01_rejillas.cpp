// The layout of the five grids, and the calendar of the month that GRID
// stands on before a load.
#include "calculos01.h"
#include "formato.h"
#include "module1.h"

#include <QDate>
#include <QLineEdit>

namespace {

// The date of a calendar row, as the text "yyyy-m-dd" the screen builds from
// its boxes; an invalid one (February 30, a year or month that is no number,
// a year of fewer than four digits) gives an invalid date. The books' years
// have four digits: a shorter one is a slip of the hand, and "202" with month
// "02" would otherwise lay out February of the year 202 while the server reads
// the text 20202 as February 2020, whose 29th day has no row.
QDate fechaDeTexto(const QString& texto)
{
    const QStringList partes = texto.split(QLatin1Char('-'));
    if (partes.size() != 3)
        return {};
    int numeros[3];
    for (int i = 0; i < 3; ++i) {
        bool bien = false;
        numeros[i] = partes[i].trimmed().toInt(&bien);
        if (!bien)
            return {};
    }
    if (numeros[0] < 1000 || numeros[0] > 9999)
        return {};
    return QDate(numeros[0], numeros[1], numeros[2]);
}

} // namespace

void CALCULOS01::Disponer(Rejilla* grid, ::Celdas& celdas, std::initializer_list<DefColumna> columnas)
{
    int c = 0;
    for (const DefColumna& d : columnas)
        grid->Columns(c++).setCaption(QString::fromUtf8(d.titulo)).setWidth(d.ancho).setAlignment(d.alineacion).setVisible(true);
    celdas.ReDim(-1, -1, 0, c - 1);
    grid->Array(celdas);
}

void CALCULOS01::Prepara_Grid()
{
    using enum Alineacion;
    // In the order of ColumnaDia, as the other grids' in that of ColumnaGrupo.
    Disponer(GRID, Celdas,
             {{"Dia", 500, Centro},
              {"", 500, Centro},
              {"Recibido", 1100, Derecha},
              {"Directos", 1100, Derecha},
              {"Tot-M", 800, Derecha},
              {"%", 700, Derecha},
              {"Tot-G", 1100, Derecha}});
    // The calendar: the rows of the month's days, until the first day that
    // the month does not have.
    Celdas.ReDim(-1, -1, 0, colTotG);
    for (int i = 0; i <= 30; ++i) {
        Fecha_Fila = Text1[txtAno]->text() + QLatin1Char('-') + Text1[txtMes]->text() + QLatin1Char('-') +
                     Format(double(i + 1), QStringLiteral("00"));
        const QDate fecha = fechaDeTexto(Fecha_Fila);
        if (!fecha.isValid())
            break;
        const int semana = fecha.dayOfWeek() % 7 + 1; // Sunday is 1
        m.J = semana;
        Celdas.ReDim(0, i, 0, colTotG);
        Celdas(i, colDia) = Format(double(i + 1), QStringLiteral("00"));
        Celdas(i, colSemana) = Module1::Nombre_Dia(int16_t(semana));
    }
    Blanquea_Pies();
    GRID->Columns(colTotM).setFooterText(QString());
    GRID->Array(Celdas);
    Prepara_Grid1();
}

void CALCULOS01::Blanquea_Pies()
{
    for (Rejilla* g : {GRID, GRID1, GRID2, GRID4})
        for (int c = grpCodigo; c <= grpPorcentaje; ++c) // up to colDirectos on GRID
            g->Columns(c).setFooterText(QString());
}

void CALCULOS01::Prepara_Grid1()
{
    using enum Alineacion;
    Disponer(GRID1, Celdas1,
             {{"C-P", 700, Centro}, {" Proveedor", 1500, General}, {"Recibido", 1100, Derecha}, {"  %", 700, Derecha}});
    Prepara_Grid2();
}

void CALCULOS01::Prepara_Grid2()
{
    using enum Alineacion;
    if (Con_Cuantos())
        Disponer(GRID2, Celdas2,
                 {{"C-C", 700, Centro},
                  {"Nombre Cliente", 3000, General},
                  {"Recibido ", 1200, Derecha},
                  {"  %", 700, Derecha},
                  {"Tot-M", 900, Derecha}});
    else
        Disponer(GRID2, Celdas2,
                 {{"C-C", 700, Centro}, {"Nombre Cliente", 3000, General}, {"Recibido ", 1200, Derecha}, {"  %", 700, Derecha}});
    Prepara_Grid4();
}

void CALCULOS01::Prepara_Grid4()
{
    using enum Alineacion;
    Disponer(GRID4, Celdas4,
             {{"C-B", 700, Centro}, {"Nombre Banco", 1500, General}, {"Recibido", 1100, Derecha}, {"  %", 800, Derecha}});
    Prepara_Grid5();
}

void CALCULOS01::Prepara_Grid5()
{
    using enum Alineacion;
    Disponer(GRID5, Celdas5,
             {{"C-S", 700, Centro}, {"Servicio", 1500, General}, {"Recibido", 1100, Derecha}, {"  %", 800, Derecha}});
    Retoca_Columnas();
}
