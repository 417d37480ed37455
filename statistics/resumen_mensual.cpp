#include "resumen_mensual.h"
#include "formato.h"
#include "module1.h"

#include <QLineEdit>

Resumen_mensual::Resumen_mensual(Module1& modulo, MDIForm1& p, const QString& nombre) : CALCULOS01(modulo, p, nombre)
{
    for (int i : {rotMes, txtMes, rotPromedio, txtBalance, rotBalance})
        Text1[size_t(i)]->hide();
    Formato_Gan = QStringLiteral("###,###");
    Formato_Pie_Porc = QStringLiteral("##0.00");
    Formato_Porc_Servicio = QStringLiteral("##0.00");
}

void Resumen_mensual::Retoca_Columnas()
{
    GRID1->Columns(grpPorcentaje).setWidth(800);
    GRID2->Columns(grpNombre).setWidth(2500);
    GRID2->Columns(grpRecibido).setWidth(1100);
    GRID2->Columns(grpPorcentaje).setWidth(800);
}

void Resumen_mensual::Busca_Fila(const QString& clave)
{
    for (const int i : Celdas.Filas())
        if (Celdas(i, colSemana) == clave) {
            Fila = int16_t(i);
            return;
        }
}

void Resumen_mensual::Prepara_Grid()
{
    using enum Alineacion;
    Disponer(GRID, Celdas,
             {{"Fecha", 900, Centro},
              {"", 8, Centro},
              {"Recibido", 1100, Derecha},
              {"Directos", 1100, Derecha},
              {"Tot-M", 1000, Derecha},
              {"%", 700, Derecha},
              {"Tot-G", 1100, Derecha}});
    Recordset& rs = *m.Rs;
    const QString campo = Campo_Clave();
    int i = 0;
    for (; !rs.Eof(); rs.MoveNext()) {
        Celdas.ReDim(0, i, 0, colTotG);
        const Valor& fecha = rs.Fields(campo);
        Celdas(i, colDia) = Format(fecha, QStringLiteral("000-00"));
        Celdas(i, colSemana) = Format(fecha, QStringLiteral("&")); // the key, hidden
        ++i;
    }
    m.I = i;
    Blanquea_Pies();
    GRID->Array(Celdas);
    Prepara_Grid1();
}

void Resumen_mensual::Ejecuta_Procedimiento() { Ejecuta({Text1[txtAno]->text(), m.K, m.L}); }

void Resumen_mensual::Porcentaje_Del_Ano() { Porc_Gan = 100 * Divide(Total_Gan, Total_Recibido); }

void Resumen_mensual::Carga_Estadistica()
{
    Empieza();
    Ejecuta_Procedimiento();
    Prepara_Grid();

    // Set 2: the months with data, each on the row of its key.
    Recordset& rs = *m.Rs;
    rs.NextRecordset();
    if (Cuenta_Filas() && rs.RecordCount() == 0) {
        Termina();
        return;
    }
    int meses = 0;
    for (; !rs.Eof(); rs.MoveNext()) {
        Busca_Fila(rs.Fields(QStringLiteral("Fecha")).aTexto());
        m.J = ++meses;
        Escribe_Dia(Fila);
    }
    Total_Fijo = Total_Recibido;
    Porcentaje_Del_Ano();
    Pies_Del_Mes();
    GRID->Array(Celdas);

    Lee_Proveedores(Total_Recibido);
    Lee_Clientes(Total_Recibido);
    Lee_Bancos(Total_Recibido);

    // Set 6: the direct transfers by month. From here Total_Recibido holds
    // the directs, and the shares of the services go against Total_Fijo.
    rs.NextRecordset();
    Total_Recibido = 0;
    m.J = 0;
    for (; !rs.Eof(); rs.MoveNext()) {
        Busca_Fila(rs.Fields(QStringLiteral("Fecha")).aTexto());
        const double suma = rs.Fields(QStringLiteral("Suma")).aDouble();
        Celdas(Fila, colDirectos) = Format(suma, QStringLiteral("###,###"));
        Total_Recibido += suma;
    }
    GRID->Columns(colDirectos).setFooterText(Format(Total_Recibido, QStringLiteral("###,##0")));
    // The hidden balance: the gain's percentage less the directs, a figure
    // kept as the screen has always computed it.
    Text1[txtBalance]->setText(Format(Porc_Gan - Total_Recibido, QStringLiteral("###,##0")));

    Lee_Servicios(Total_Fijo);
    Termina();
}
