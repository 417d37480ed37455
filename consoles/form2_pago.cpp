#include "form2_pago.h"
#include "module1.h"
#include "numeros.h"

Form2_Pago::Form2_Pago(Module1& m, MDIForm1& principal)
    : Consola(m, principal, QStringLiteral("Form2_Pago"), QStringLiteral("Form2_Pago :       CONSULTAS POR FECHA DE PAGO"))
{
}

std::vector<Consola::DefColumna> Form2_Pago::Columnas() const
{
    std::vector<DefColumna> c = Consola::Columnas();
    c.resize(colUltimaPago + 1);
    c[colCliente].ancho = 3000;
    c[colProveedor].ancho = 2000;
    c[colFechaHoraPago].titulo = "Fecha de Pago";
    c[colFechaHoraPago].ancho = 2200;
    c[colZelle].titulo = "Z";
    c[colZelle].ancho = 300;
    c[colTipoOp].ancho = 300;
    // The percentages and gains are loaded and saved, but not for the eye.
    for (int col = colPorcentaje; col <= colG3; ++col)
        c[size_t(col)].ancho = 1;
    return c;
}

std::vector<std::pair<int, int>> Form2_Pago::Movidas() const
{
    // The console's moves of the columns this grid has.
    std::vector<std::pair<int, int>> movidas = Consola::Movidas();
    std::erase_if(movidas, [](const auto& movida) { return movida.first > colUltimaPago; });
    return movidas;
}

QString Form2_Pago::Fecha_Y_Hora(const QString& fecha_pago, const QString& hora_pago)
{
    const QString fecha = fecha_pago.isEmpty() ? QString() : Module1::Fecha_DMA(fecha_pago);
    return fecha + QLatin1Char(' ') + hora_pago;
}

void Form2_Pago::Llena_Fila(int i)
{
    // The estimate is worked out as in the console by date and dropped.
    const double estimado = Total_Estimado;
    Consola::Llena_Fila(i);
    Total_Estimado = estimado;
    Celdas(i, colFechaHoraPago) = Fecha_Y_Hora(Campo(campos.fecha_pago).aTexto(), Campo(campos.hora_pago).aTexto());
    Celdas(i, colZelle) = Campo(campos.bancozelle).aTexto();
}

void Form2_Pago::Escribe_Pies()
{
    Consola::Escribe_Pies();
    GRID->Columns(colFechaHoraPago).setFooterText(QString());
}

void Form2_Pago::Banco_Reverso(int i)
{
    // Back to unpaid; no provider's gift is touched.
    A_No_Pagada(i);
    Celdas(i, colCodProveedor) = QStringLiteral("0000");
    Reenlaza();
}

void Form2_Pago::Servicio_Editado(int i)
{
    // No guard on the code: one above the services' table stops the program.
    Celdas(i, colServicio) = m.Servicios_T(long(Numeros::CInt(Num(i, colCodServicio))))[2];
    Reenlaza();
    GRID->setCol(colCodServicio);
}
