// The load: the procedure's six result sets into the five grids, their
// totals, footers and shares.
#include "calculos01.h"
#include "fallo.h"
#include "formato.h"
#include "module1.h"
#include "numeros.h"

#include <QLineEdit>

using Numeros::CInt;

void CALCULOS01::Ejecuta(std::initializer_list<Valor> valores)
{
    m.Cierra_Rs();
    m.Prepara_Comando(Procedimiento());
    int n = 1;
    for (const Valor& v : valores)
        m.Comando.Parameters(n++) = v;
    m.Ejecuta_Comando();
}

double CALCULOS01::Divide(double a, double b)
{
    if (b == 0)
        throw FalloEjecucion::divisionPorCero();
    return a / b;
}

double CALCULOS01::Porcion(double suma, double total) { return suma > 0 ? Divide(suma * 100, total) : 0; }

void CALCULOS01::Escribe_Dia(int fila)
{
    const Recordset& rs = *m.Rs;
    const double suma = rs.Fields(QStringLiteral("Suma")).aDouble();
    const double totM = rs.Fields(QStringLiteral("Tot_m")).aDouble();
    const double porcen = rs.Fields(QStringLiteral("Porcen")).aDouble();
    const double totgan = rs.Fields(QStringLiteral("Totgan")).aDouble();
    Celdas(fila, colRecibido) = Format(suma, QStringLiteral("###,###"));
    Celdas(fila, colTotM) = Format(totM, QStringLiteral("###,###"));
    Celdas(fila, colPorc) = Format(porcen, QStringLiteral("##0.00"));
    Celdas(fila, colTotG) = Format(totgan, Formato_Gan);
    Total_Recibido += suma;
    Total_Tot_M += totM;
    Total_Gan += totgan;
}

void CALCULOS01::Pies_Del_Mes()
{
    GRID->Columns(colRecibido).setFooterText(Format(Total_Recibido, QStringLiteral("###,##0")));
    GRID->Columns(colTotM).setFooterText(Format(Total_Tot_M, QStringLiteral("###,##0")));
    GRID->Columns(colPorc).setFooterText(Format(Porc_Gan, Formato_Pie_Porc));
    GRID->Columns(colTotG).setFooterText(Format(Total_Gan, QStringLiteral("###,##0")));
}

void CALCULOS01::Lee_Grupo(Rejilla* grid, ::Celdas& celdas, const QString& campo, const QString& formatoCodigo,
                           const std::function<QString(const Valor&)>& nombre, double total, const QString& formatoPorc,
                           bool conteo, bool cuantos)
{
    Recordset& rs = *m.Rs;
    const int ultima = cuantos ? grpCuantos : grpPorcentaje;
    Suma_Grid = 0;
    int i = -1;
    for (; !rs.Eof(); rs.MoveNext()) {
        ++i;
        m.I = i;
        celdas.ReDim(0, i, 0, ultima);
        const Valor& codigo = rs.Fields(campo);
        const double suma = rs.Fields(QStringLiteral("Suma")).aDouble();
        celdas(i, grpCodigo) = Format(codigo, formatoCodigo);
        celdas(i, grpNombre) = nombre(codigo);
        celdas(i, grpRecibido) = Format(suma, QStringLiteral("###,###"));
        if (cuantos) {
            const double n = rs.Fields(QStringLiteral("cuantos")).aDouble();
            celdas(i, grpCuantos) = Format(n, QStringLiteral("###,###"));
            Total_Cuantos += n;
        }
        celdas(i, grpPorcentaje) = Format(Porcion(suma, total), formatoPorc);
        Suma_Grid += suma;
    }
    if (conteo)
        grid->Columns(grpCodigo).setFooterText(Format(double(i + 1), QStringLiteral("###,##0")));
    grid->Columns(grpRecibido).setFooterText(Format(Suma_Grid, QStringLiteral("###,##0")));
    if (cuantos)
        grid->Columns(grpCuantos).setFooterText(Format(Total_Cuantos, QStringLiteral("###,##0")));
}

void CALCULOS01::Lee_Proveedores(double total)
{
    m.Rs->NextRecordset();
    Lee_Grupo(
        GRID1, Celdas1, QStringLiteral("prov"), QStringLiteral("0000"),
        [this](const Valor& v) { return m.Nombre_Proveedor(CInt(v.aDouble())); }, total, QStringLiteral("###,##0.00"), true,
        false);
}

QHash<int, QString> CALCULOS01::Indice_Clientes(bool& completo) const
{
    // The first row of a code wins, as in Nombre_Cliente. A code text that is
    // no number ends the index: the codes not found before it go to
    // Nombre_Cliente, which meets that row as it always has.
    QHash<int, QString> indice;
    completo = false;
    for (int j = 1; j <= m.N_Clientes; ++j) {
        const QString& codigo = m.Clientes_T(j, 1);
        if (!codigo.trimmed().isEmpty() && !Numeros::EsNumerico(codigo))
            return indice;
        const int clave = int(Numeros::Int(Numeros::CDbl(codigo)));
        if (!indice.contains(clave))
            indice.insert(clave, m.Clientes_T(j, 2));
    }
    completo = true;
    return indice;
}

void CALCULOS01::Lee_Clientes(double total)
{
    m.Rs->NextRecordset();
    Total_Cuantos = 0;
    bool completo = false;
    const QHash<int, QString> nombres = Indice_Clientes(completo);
    Lee_Grupo(
        GRID2, Celdas2, QStringLiteral("Cliente"), QStringLiteral("0000"),
        [this, &nombres, completo](const Valor& v) {
            const int16_t codigo = CInt(v.aDouble());
            const auto nombre = nombres.constFind(codigo);
            if (nombre != nombres.constEnd())
                return nombre.value();
            // An unknown code shows as the number, as Nombre_Cliente gives
            // it after searching the whole cache in vain.
            return completo ? QString::number(codigo) : m.Nombre_Cliente(codigo);
        },
        total, QStringLiteral("###,##0.00"), true, Con_Cuantos());
}

void CALCULOS01::Lee_Bancos(double total)
{
    m.Rs->NextRecordset();
    Total_Cuantos = 0;
    Lee_Grupo(
        GRID4, Celdas4, QStringLiteral("Banco"), QStringLiteral("0000"),
        [this](const Valor& v) { return m.Nombre_Banco(v.aTexto()); }, total, QStringLiteral("###,##0.00"), true, false);
}

void CALCULOS01::Lee_Servicios(double total)
{
    m.Rs->NextRecordset();
    // A code beyond the services' table stops the load, as any subscript out of range.
    Lee_Grupo(
        GRID5, Celdas5, QStringLiteral("servi"), QStringLiteral("00"),
        [this](const Valor& v) { return m.Servicios_T(CInt(v.aDouble()))[2]; }, total, Formato_Porc_Servicio, false, false);
}

void CALCULOS01::Termina()
{
    m.Cierra_Rs();
    for (auto [grid, celdas] :
         {std::pair {GRID, &Celdas}, {GRID1, &Celdas1}, {GRID2, &Celdas2}, {GRID4, &Celdas4}, {GRID5, &Celdas5}})
        grid->Array(*celdas);
    if (Con_Reloj())
        Reloj_De_Arena(false);
    emit Cargada();
}

void CALCULOS01::Empieza()
{
    if (Con_Reloj())
        Reloj_De_Arena(true);
    Suma_Grid = 0;
    Total_Recibido = 0;
    Total_Tot_M = 0;
    Porc_Gan = 0;
    Total_Gan = 0;
    Text1[txtBalance]->clear();
}

void CALCULOS01::Carga_Estadistica()
{
    Empieza();
    Prepara_Grid();
    // Boxes that name no month lay out no calendar, and the figures of
    // whatever the joined text might match would have no day to go to.
    if (Celdas.filas() == 0) {
        Termina();
        return;
    }

    Ejecuta({Text1[txtAno]->text() + Text1[txtMes]->text(), m.K, m.L});
    Recordset& rs = *m.Rs;
    if (Cuenta_Filas() && rs.RecordCount() == 0) {
        Termina();
        return;
    }

    // Set 1: the days with data, each on its calendar row.
    int dias = 0;
    for (; !rs.Eof(); rs.MoveNext()) {
        ++dias;
        const int dia = CInt(rs.Fields(QStringLiteral("dia")).aDouble());
        m.I = dia;
        Escribe_Dia(dia - 1);
    }
    m.J = dias;
    if (dias == 0) {
        m.Cierra_Rs();
        return;
    }
    Porc_Gan = 100 * Divide(Total_Gan, Total_Recibido);
    GRID->Columns(colSemana).setFooterText(Format(double(dias), QStringLiteral("###,##0")));
    Pies_Del_Mes();
    // The average is over the days that have movements, not the calendar's.
    Text1[txtPromedio]->setText(Format(Divide(Total_Recibido, dias), QStringLiteral("###,##0")));
    GRID->Array(Celdas);

    Lee_Proveedores(Total_Recibido);
    Lee_Clientes(Total_Recibido);
    Lee_Bancos(Total_Recibido);

    // Set 5: the direct transfers, into the directs of their days.
    rs.NextRecordset();
    Suma_Grid = 0;
    int directos = 0;
    m.J = 0;
    for (; !rs.Eof(); rs.MoveNext()) {
        m.J = ++directos;
        const int dia = CInt(rs.Fields(QStringLiteral("dia")).aDouble());
        m.I = dia;
        const double suma = rs.Fields(QStringLiteral("Suma")).aDouble();
        Celdas(dia - 1, colDirectos) = Format(suma, QStringLiteral("###,###"));
        Suma_Grid += suma;
    }
    GRID->Columns(colDirectos).setFooterText(Format(Suma_Grid, QStringLiteral("###,##0")));
    // What was received and did not come as a direct transfer.
    Text1[txtBalance]->setText(Format(Total_Recibido - Suma_Grid, QStringLiteral("###,##0")));

    Lee_Servicios(Total_Recibido);
    Termina();
}
