#include "f5_usdt.h"
#include "consola_comun.h"
#include "fallo.h"
#include "module1.h"
#include "numeros.h"

#include <QPushButton>

#include <cmath>

using namespace Numeros;

F5_USDT::F5_USDT(Module1& m, MDIForm1& principal)
    : Consola(m, principal, QStringLiteral("F5_USDT"), QStringLiteral("F5_USDT :       CONSULTAS USDT"))
{
    // The screen is a little narrower than the other consoles: the grid and
    // "Salir" end inside it.
    GRID->resize(GRID->width() - 16, GRID->height());
    SALIR->move(SALIR->x() - 16, SALIR->y());
}

void F5_USDT::Form_Load() { Colocar(10, 101, 20050, 10000); }

std::vector<Consola::DefColumna> F5_USDT::Columnas() const
{
    std::vector<DefColumna> c = Consola::Columnas();
    c.resize(colUltimaUsdt + 1);
    const std::pair<const char*, int> propias[colUltimaUsdt + 1] = {
        {"Fecha", 1100}, {"Sec.", 600},       {"C-C", 600},       {"Cliente", 2500}, {"Envio", 1200}, {"Recibido", 1000},
        {"C-P", 600},    {"Proveedor", 2000}, {"Estimado", 1200}, {"C-B", 600},      {"Banco", 100},  {"Referencia", 800},
        {"", 400},       {"Op", 400},         {"T", 300},         {"Pagado", 1200},  {"Moneda", 850}, {"Sel", 400},
        {"T-S", 500},    {"Servicio", 1400},  {" %", 700},        {" G", 1200},      {"Nota", 1},
    };
    for (size_t i = 0; i < c.size(); ++i) {
        c[i].titulo = propias[i].first;
        c[i].ancho = propias[i].second;
    }
    return c;
}

std::vector<std::pair<int, int>> F5_USDT::Movidas() const
{
    // The console's moves of the columns this grid has.
    std::vector<std::pair<int, int>> movidas = Consola::Movidas();
    std::erase_if(movidas, [](const auto& movida) { return movida.first > colUltimaUsdt; });
    return movidas;
}

void F5_USDT::Prepara_Campos()
{
    Consola::Prepara_Campos();
    Total_Ganancia = 0;
}

void F5_USDT::Llena_Fila(int i)
{
    // The two patterns of this console alone; the others are the console's.
    static const FormatoNumero fEnvioUsdt(QStringLiteral("#,###.00"));
    static const FormatoNumero fGanancia(QStringLiteral("#,##0.00"));

    const Campos& c = campos;
    const auto [banco, devuelta, enviado, recibido, pago, servicio, proveedor] = Lee_Registro();
    const double confirmacion = Campo(c.confirmacion).aDouble();
    const int16_t cliente = CInt(Campo(c.C_CLIENTE).aDouble());

    Celdas(i, colFecha) = Fecha_Vista(colFecha, Campo(c.Fecha).aTexto());
    Celdas(i, colSec) = Codigo(Campo(c.secuenciA).aDouble());
    Celdas(i, colCodCliente) = Codigo(cliente);
    Celdas(i, colCliente) = Nombre_Cliente(cliente);
    Celdas(i, colEnvio) = Cifra(fEnvioUsdt, enviado);
    Celdas(i, colRecibido) = Cifra(consola::fEnvio, recibido);
    Celdas(i, colCodProveedor) = Codigo(proveedor);
    Celdas(i, colProveedor) = Nombre_Proveedor(proveedor);
    if (confirmacion > 0)
        Celdas(i, colMoneda) = Cifra(consola::f3_0_00, confirmacion);
    m.K = servicio;
    if (banco.isEmpty()) {
        // Unpaid: the price of the moment, and the estimate at it, decimals kept.
        const double precio = m.Monto_T(servicio);
        Celdas(i, colMoneda) = Cifra(consola::fTasa, precio);
        const double bs = enviado * precio;
        Celdas(i, colEstimado) = Cifra(consola::fMiles00, bs);
        Total_Estimado += bs;
    } else {
        Celdas(i, colPagado) = Cifra(consola::fMiles00, pago);
    }
    Llena_Datos(i, banco, servicio);
    Celdas(i, colServicio) = m.Servicios_T(servicio)[2].left(15);

    // A row stored without its gain is all gain.
    double ganancia = Campo(c.Ganancia).aDouble();
    if (ganancia == 0)
        ganancia = 100;
    Ganancia_Fila = recibido * ganancia / 100;
    Celdas(i, colPorcentaje) = Cifra(consola::f3_0_00, ganancia);
    Celdas(i, colGanancia) = Cifra(fGanancia, Ganancia_Fila);
    if (devuelta) {
        Celdas(i, colPorcentaje) = QString();
        Celdas(i, colGanancia) = QString();
    } else {
        Total_Ganancia += Ganancia_Fila;
        Total_Enviado += enviado;
        Total_Recibido += recibido;
    }
    if (!banco.isEmpty())
        Total_Pagado += pago;
    ++Total_Filas;
}

void F5_USDT::Escribe_Pies()
{
    Pies_Comunes();
    GRID->Columns(colPorcentaje).setFooterText(QString());
    GRID->Columns(colGanancia).setFooterText(QString());
    if (Total_Ganancia > 0) {
        GRID->Columns(colGanancia).setFooterText(Format(Total_Ganancia, QStringLiteral("#,##0.00")));
        // The percentage of the whole, weighted by what each row received.
        GRID->Columns(colPorcentaje).setFooterText(Format(100 * (Total_Ganancia / Total_Recibido), QStringLiteral("##0.00")));
    }
}

void F5_USDT::CALCULA_PORCENTAJE(double& Monto, int16_t&)
{
    Porcentaje = 0;
    if (m.Dolar_Param == 0)
        throw FalloEjecucion::divisionPorCero();
    const float cociente = CSng(double(CSng(Monto)) / double(m.Dolar_Param));
    Porcentaje = CSng(std::fabs(double(cociente) - 1.0) * 100.0);
}

void F5_USDT::Ganancia_Del_Pago(int i)
{
    Monto_Calc = Num(i, colMoneda);
    Tipo_Serv = CInt(Num(i, colCodServicio));
    CALCULA_PORCENTAJE(Monto_Calc, Tipo_Serv);
    Celdas(i, colPorcentaje) = Format(double(Porcentaje), QStringLiteral("##0.00"));
}

void F5_USDT::Banco_Pago(int i, const QString& codigo)
{
    if (!Banco_Registrado(i, codigo))
        return;
    // What was sent at the row's price, cut to bolivars, whatever the service.
    const float bs = CSng(Num(i, colEnvio) * Num(i, colMoneda));
    Celdas(i, colPagado) = Format(Int(bs), QStringLiteral("###,##0.00"));
    Celdas(i, colEstimado) = QString();
    Ganancia_Del_Pago(i);
    Reenlaza();
    GRID->setCol(colReferencia);
}

void F5_USDT::Banco_Reverso(int i)
{
    Celdas(i, colEstimado) = Celdas(i, colPagado);
    for (int c : {colCodProveedor, colProveedor, colCodBanco, colBanco, colReferencia})
        Celdas(i, c) = QString();
    Celdas(i, colPagado) = QStringLiteral("0");
    Celdas(i, colPorcentaje) = QStringLiteral("0");
    Reenlaza();
}
