// The panel's service rates: their load, the calculation of the new amounts
// from the dollar and the USDT prices, and their store.
#include "new_dolar.h"
#include "fallo.h"
#include "formato.h"
#include "login.h"
#include "mensajes.h"
#include "module1.h"
#include "numeros.h"
#include "rejilla.h"

#include <QLineEdit>

using namespace Numeros;

namespace {

// The cut of a rate to the decimals of its service. The text in "##0.00000"
// is cut by counting characters, not rounded, which supposes three digits
// before the decimal mark: 123,45678 at 2 decimals gives 123,4500, but
// 12,34567 gives 12,34500. That is how the business's rates have always been
// cut, and it stays.
QString Corta_Decimales(const QString& texto, const Celda& decimales)
{
    if (decimales == 2)
        return texto.left(6) + QStringLiteral("00");
    if (decimales == 3)
        return texto.left(7) + QStringLiteral("0");
    if (decimales == 4)
        return texto.left(8) + QStringLiteral("0");
    return texto;
}

// A figure rounded to four decimals and read back, as each step of the USDT
// pricing takes the previous one.
double Cuatro_Decimales(double valor) { return CDbl(Format(valor, QStringLiteral("##0.0000"))); }

double Divide(double a, double b)
{
    if (b == 0)
        throw FalloEjecucion::divisionPorCero();
    return a / b;
}

} // namespace

void NEW_DOLAR::Prepara_Grid()
{
    const auto d = Alineacion::Derecha, c = Alineacion::Centro, g = Alineacion::General;
    // In the order of Columna.
    struct {
        const char* titulo;
        int ancho;
        Alineacion alineacion;
    } const columnas[] = {{"Código", 1000, c},     {"Servicio", 2000, g},      {"Monto\rAnterior", 1300, d},
                          {"Porcentaje", 1300, d}, {"Monto\rActual", 1300, d}, {"Deci.", 800, c},
                          {"Sw-C", 800, c}};
    for (int n = colCodigo; n <= colSwC; ++n)
        GRID->Columns(n)
            .setWidth(columnas[n].ancho)
            .setCaption(QString::fromUtf8(columnas[n].titulo))
            .setAlignment(columnas[n].alineacion)
            .setHeadAlignment(c)
            .setAllowFocus(n == colMontoActual);
    GRID->setRowHeight(300);
    Celdas.ReDim(-1, -1, 0, 0);
    GRID->Array(Celdas);
    GRID->ReBind();
}

void NEW_DOLAR::Carga_Dolares()
{
    m.Precios_T.llenar(0);
    Prepara_Grid();
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_dolares"));
    m.Ejecuta_Comando();
    int i = -1;
    while (!m.Rs->Eof()) {
        ++i;
        Celdas.ReDim(0, i, 0, colSwC);
        const int codigo = CInt(m.Rs->Fields(QStringLiteral("C_SERVIcio")).aDouble());
        Celdas(i, colCodigo) = Format(m.Rs->Fields(QStringLiteral("C_SERVIcio")), QStringLiteral("00"));
        Celdas(i, colServicio) = Format(m.Rs->Fields(QStringLiteral("D_SERVIcio")), QStringLiteral("&"));
        Celdas(i, colMontoAnterior) = Format(m.Rs->Fields(QStringLiteral("MONTO")), QStringLiteral("##0.0000"));
        Celdas(i, colPorcentaje) = Format(m.Rs->Fields(QStringLiteral("porcentaje")), QStringLiteral("###.00"));
        Celdas(i, colDecimales) = m.Servicios_T(codigo)[4];
        Celdas(i, colSwC) = Format(m.Rs->Fields(QStringLiteral("sw_calculos")), QStringLiteral("&"));
        m.Precios_T(codigo) = CSng(100 - m.Rs->Fields(QStringLiteral("porcentaje")).aDouble());
        m.Rs->MoveNext();
    }
    m.Cierra_Rs();
    GRID->Array(Celdas);
    GRID->ReBind();
}

void NEW_DOLAR::Calcula_Valores()
{
    GRID1->Update();
    // The prices are read with the decimal comma: a typed point works as one.
    for (int i : Celdas1.Filas())
        for (int col : {usdtCompra, usdtVenta})
            Celdas1(i, col) = Con_Coma(Celdas1(i, col).texto());
    GRID1->Array(Celdas1);
    GRID1->ReBind();
    // The buy price of the first USDT row is the reference dollar.
    Dolar_Usdt = CSng(CDbl(Format(Celdas1(0, usdtCompra), QStringLiteral("###.00"))));
    Text1->setText(Format(double(Dolar_Usdt), QStringLiteral("###.00")));
    Calcula_Montos();
}

void NEW_DOLAR::Calcula_Montos()
{
    // The base USDT price (second row) stands for the whole pass.
    const double Base = Celdas1(1, usdtCompra).numero();

    // Services priced from the dollar, less their percentage, cut to their decimals.
    for (int i : Celdas.Filas()) {
        if (!(Celdas(i, colSwC) == 1))
            continue;
        const double Factor = (100 - Celdas(i, colPorcentaje).numero()) / 100;
        const QString valor = Format(CDbl(Text1->text()) * Factor, QStringLiteral("##0.00000"));
        Celdas(i, colMontoActual) = Corta_Decimales(valor, Celdas(i, colDecimales));
    }

    // Services tied to a USDT row (equivalence above 49): the base against
    // the row's price, less the service's percentage, each step at four
    // decimals. A later row with the same equivalence wins.
    for (int i : Celdas1.Filas()) {
        if (!(Celdas1(i, usdtEquivalencia).numero() > 49))
            continue;
        const int K = CInt(Celdas1(i, usdtEquivalencia).numero());
        const double compra = Celdas1(i, usdtCompra).numero();
        double Valor = 0;
        if (compra > 0 && Celdas1(i, usdtDivide) == 1)
            Valor = Cuatro_Decimales(Divide(Base, compra));
        if (compra > 0 && Celdas1(i, usdtDivide) == 2)
            Valor = Cuatro_Decimales(Divide(compra, Base));
        // The percentage travels in single precision.
        Valor = Cuatro_Decimales(double(m.Precios_T(K) / 100.0f) * Valor);
        for (int j : Celdas.Filas())
            if (Celdas(j, colCodigo) == K)
                Celdas(j, colMontoActual) = Valor;
    }
    GRID->Array(Celdas);
    GRID->ReBind();
    GRID1->Array(Celdas1);
    GRID1->ReBind();
}

void NEW_DOLAR::Actualiza_Valores()
{
    Reloj_De_Arena(true);
    struct Fin {
        ~Fin() { Reloj_De_Arena(false); }
    } fin;
    GRID->Update();
    GRID->Array(Celdas);
    GRID->ReBind();
    // The second row's amount tells that the calculation was run.
    if (Celdas(1, colMontoActual).texto().trimmed().isEmpty())
        return;
    // An empty dollar would be stored as 0, the day's dollar of the consoles.
    if (Text1->text().trimmed().isEmpty()) {
        Mensajes::MsgBox(QStringLiteral("Indique Dolar del día"));
        Text1->setFocus();
        return;
    }
    for (int i : Celdas.Filas()) {
        // The server reads the decimal comma; a typed point becomes one.
        Celdas(i, colMontoActual) = Con_Coma(Celdas(i, colMontoActual).texto());
        m.Cierra_Rs();
        m.Prepara_Comando(QStringLiteral("TRU_UPDATE_DOLAR_02"));
        m.Comando.Parameters(1) = Valor(Celdas(i, colCodigo).texto().trimmed());
        m.Comando.Parameters(2) = Valor(Celdas(i, colMontoActual).texto().trimmed());
        m.Ejecuta_Comando();
    }
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_UPDATE_DOLAR_03"));
    m.Comando.Parameters(1) = Valor(Text1->text().trimmed());
    m.Rs = m.Comando.Execute(4);
    m.Cierra_Rs();

    m.Fecha_Param = m.reloj().toString(QStringLiteral("dd/MM/yyyy HH:mm:ss"));
    Rotula_Fechas();
    Carga_Dolares();
    // The whole client takes the new rates and the dollar.
    LOGIN::Carga_Parametros(m);
    GRID->Array(Celdas);
    GRID->ReBind();
    Text1->setFocus();
}
