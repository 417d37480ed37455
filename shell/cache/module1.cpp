#include "module1.h"
#include "numeros.h"

#include <chrono>
#include <thread>

using namespace Numeros;

Module1::Module1(Despliegue d) : despliegue(std::move(d))
{
    Bancos_T.ReDim(1);
    Clientes_T.ReDim(1);
    Proveedores_T.ReDim(1);
    Conceptos_T.ReDim(1);
}

void Module1::Cierra_Rs()
{
    if (Rs && Rs->Abierto())
        Rs->Close();
    Rs.reset();
}

void Module1::Prepara_Comando(const QString& procedimiento)
{
    Comando.CommandText = procedimiento;
    Comando.CommandTimeout = 60;
    Comando.CommandType = 4;
    Comando.ActiveConnection = &Conexion;
}

void Module1::Ejecuta_Comando() { Rs = Comando.Execute(-1); }

void Module1::Ejecuta_Comando_Por_Filas(const std::function<void()>& alEmpezar, const std::function<void()>& porFila)
{
    Rs = std::make_unique<Recordset>();
    Comando.ExecutePorFilas(*Rs, alEmpezar, porFila);
}

void Module1::Abre_Rs(const QString& sql)
{
    Rs = std::make_unique<Recordset>();
    Rs->Open(sql, Conexion);
}

void Module1::Hora_Servidor()
{
    Cierra_Rs();
    SQL = QStringLiteral("SELECT FECHA=GETDATE()");
    Abre_Rs(SQL);
    const QDateTime ahora = Rs->Fields(QStringLiteral("Fecha")).aFechaHora();
    Ahora_Texto = ahora.toString(QStringLiteral("dd/MM/yyyy HH:mm:ss"));
    Hora_S = ahora.time().hour();
    Minuto_S = ahora.time().minute();
    Segundo_S = ahora.time().second();
    Dia_S = ahora.date().day();
    Mes_S = ahora.date().month();
    Ano_S = ahora.date().year();
    Cierra_Rs();
}

QString Module1::Fecha_AMD(const QString& fecha) { return fecha.mid(6, 4) + fecha.mid(3, 2) + fecha.mid(0, 2); }

QString Module1::Fecha_DMA(const QString& fecha)
{
    return fecha.mid(6, 2) + QLatin1Char('/') + fecha.mid(4, 2) + QLatin1Char('/') + fecha.mid(0, 4);
}

void Module1::Carga_Tablas()
{
    const auto texto = [this](const char* campo) { return Rs->Fields(QLatin1String(campo)).aTexto(); };
    const auto entero = [this](const char* campo) { return CLng(Rs->Fields(QLatin1String(campo)).aDouble()); };

    Cierra_Rs();
    Prepara_Comando(QStringLiteral("TRU_CARGA_TABLAS_03"));
    Ejecuta_Comando();

    Bancos_T.ReDim(1);
    Clientes_T.ReDim(1);
    Proveedores_T.ReDim(1);

    // 1: banks
    int32_t i = 0;
    for (; !Rs->Eof(); Rs->MoveNext()) {
        I = ++i;
        Bancos_T.ReDimPreserve(i);
        Bancos_T(i, 1) = texto("C_Banco");
        Bancos_T(i, 2) = texto("D_banco");
    }
    N_Bancos = CInt(i);

    // 2: clients
    Rs->NextRecordset();
    for (i = 0; !Rs->Eof(); Rs->MoveNext()) {
        I = ++i;
        Clientes_T.ReDimPreserve(i);
        Clientes_T(i, 1) = texto("C_CLIENTE");
        Clientes_T(i, 2) = texto("D_cliente");
        Clientes_T(i, 3) = texto("Revisar");
    }
    N_Clientes = CInt(i);

    // 3: providers; the gain share is kept as a whole number
    Rs->NextRecordset();
    for (i = 0; !Rs->Eof(); Rs->MoveNext()) {
        I = ++i;
        Proveedores_T.ReDimPreserve(i);
        Proveedores_T(i, 1) = texto("C_proveedor");
        Proveedores_T(i, 2) = texto("D_proveedor");
        Proveedores_T(i, 3) = Str(Int(Rs->Fields(QStringLiteral("porgan")).aDouble()));
        Proveedores_T(i, 4) = texto("Comision");
    }
    N_Proveedores = CInt(i);

    // 4: payment concepts
    Rs->NextRecordset();
    for (i = 0; !Rs->Eof(); Rs->MoveNext()) {
        I = ++i;
        Conceptos_T.ReDimPreserve(i);
        Conceptos_T(i, 1) = texto("C_CONCEPTO");
        Conceptos_T(i, 2) = texto("D_CONCEPTO");
    }
    N_Conceptos = CInt(i);

    // 5 is not read: two steps take the result to the services
    Rs->NextRecordset();
    Rs->NextRecordset();

    // 6: services, by their own code; the last code read stands for the count
    for (i = 0; !Rs->Eof(); Rs->MoveNext()) {
        i = entero("C_SERVIcio");
        I = i;
        auto& servicio = Servicios_T(i);
        servicio[1] = texto("C_SERVIcio");
        servicio[2] = texto("D_SERVIcio");
        servicio[3] = texto("porcentaje");
        servicio[4] = texto("decimales");
        servicio[5] = texto("letra");
    }
    N_Servicios = CInt(i);

    // 7: the amount of each service; purchase prices are cleared before the USDT rates
    Rs->NextRecordset();
    for (; !Rs->Eof(); Rs->MoveNext()) {
        i = entero("C_SERVIcio");
        I = i;
        Monto_T(i) = CSng(Rs->Fields(QStringLiteral("MONTO")).aDouble());
    }
    for (int c = 1; c <= 100; ++c)
        Compra_T(c) = 0;

    // 8: USDT rates, written on the place of the service they price when they have one
    Rs->NextRecordset();
    for (; !Rs->Eof(); Rs->MoveNext()) {
        i = entero("equivalencia");
        if (i == 0)
            i = entero("C_SERVIcio");
        I = i;
        Compra_T(i) = Rs->Fields(QStringLiteral("compra")).aDouble();
        Div_T(i) = Rs->Fields(QStringLiteral("div")).aDouble();
    }

    // 9: Zelle banks, codes 0 to 10
    Rs->NextRecordset();
    for (; !Rs->Eof(); Rs->MoveNext()) {
        i = entero("C_Banco");
        I = i;
        Bancos_Zelle_T(i) = texto("D_banco");
    }
    Cierra_Rs();
}

QString Module1::Nombre_Banco(const QString& codigo)
{
    for (int j = 1; j <= N_Bancos; ++j) {
        J = j;
        if (Bancos_T(j, 1) == codigo)
            return Bancos_T(j, 2);
    }
    return codigo;
}

namespace {
// The name of a numeric code in a cache table whose column 1 holds the code as text.
template <typename Tabla> QString nombrePorNumero(const Tabla& tabla, int16_t cuantos, int16_t codigo, Valor& J)
{
    for (int j = 1; j <= cuantos; ++j) {
        J = j;
        if (Int(CDbl(tabla(j, 1))) == codigo)
            return tabla(j, 2);
    }
    return QString::number(codigo);
}
} // namespace

QString Module1::Nombre_Cliente(int16_t codigo) { return nombrePorNumero(Clientes_T, N_Clientes, codigo, J); }
QString Module1::Nombre_Proveedor(int16_t codigo) { return nombrePorNumero(Proveedores_T, N_Proveedores, codigo, J); }
QString Module1::Nombre_Concepto(int16_t codigo) { return nombrePorNumero(Conceptos_T, N_Conceptos, codigo, J); }

QString Module1::Nombre_Dia(int16_t dia)
{
    static const char* const dias[] = {"Dom", "Lun", "Mar", "Mie", "Jue", "Vie", "Sab"};
    if (dia < 1 || dia > 7)
        return {};
    return QString::fromLatin1(dias[dia - 1]);
}

void Module1::Espera(int16_t segundos)
{
    // Blocks the screen on purpose, without serving events, so that a message stays in view.
    const QDateTime hasta = reloj().addSecs(segundos);
    while (reloj() < hasta)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

float Module1::Dolar_De_Envio(const QString& enviado) { return Numeros::CSng(Numeros::CDbl(enviado) / 100); }

void Module1::Carga_Dolar_Actual()
{
    Cierra_Rs();
    SQL = QStringLiteral(" select * from dolar");
    Abre_Rs(SQL);
    if (!Rs->Eof())
        Dolar_Actual = Dolar_De_Envio(QString::number(Rs->Fields(QStringLiteral("valor")).aDouble(), 'f', 2));
    Cierra_Rs();
}

void Module1::Convierte_Dolar(double monto, int16_t servicio)
{
    Monto_Conv = monto;
    Monto_Usd = monto;
    if (servicio == 1) {
        Monto_Usd = monto * 94.6 / 100 - 0.3;
    } else if (servicio == 9) {
        Monto_Usd = monto * 97.1 / 100 - 0.3;
    } else if (servicio >= 50) {
        const double div = Div_T(servicio);
        if (div == 1) {
            if (Compra_T(servicio) > 0)
                Monto_Usd = monto / Compra_T(servicio);
        } else if (div == 2) {
            // Every service priced this way divides by the rate of service 2.
            if (Compra_T(2) == 0)
                throw FalloEjecucion::divisionPorCero();
            Monto_Usd = monto / Compra_T(2);
        }
    }
}
