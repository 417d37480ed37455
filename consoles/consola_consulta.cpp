// The console's query and the filling of its rows.
#include "consola.h"
#include "consola_comun.h"
#include "controles.h"
#include "dialogo.h"
#include "fallo.h"
#include "formato.h"
#include "login.h"
#include "mdiform1.h"
#include "mensajes.h"
#include "module1.h"
#include "numeros.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFontMetrics>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QTableView>

#include <cmath>

using namespace Numeros;
using Mensajes::MsgBox;
using namespace consola;

// ------------------------------------------------------------------ the query

const QString& Consola::Codigo(double valor)
{
    auto& codigos = compartidos.codigos;
    if (valor < 0 || valor > 9999 || valor != std::floor(valor)) {
        static thread_local QString suelto;
        suelto = f0000(valor);
        return suelto;
    }
    if (codigos.empty())
        codigos.resize(10000);
    QString& t = codigos[size_t(valor)];
    if (t.isNull())
        t = f0000(valor);
    return t;
}

Celda Consola::Cifra(const FormatoNumero& formato, double valor) { return Celda::Cifra(formato, valor); }

const QString& Consola::Fecha_Vista(int col, const QString& amd)
{
    auto& [clave, texto] = compartidos.fechas[col == colFecha ? 0 : 1];
    if (texto.isNull() || clave != amd) {
        clave = amd;
        texto = Module1::Fecha_DMA(amd);
    }
    return texto;
}

const std::array<QString, 3>& Consola::Banco_Vista(const QString& banco)
{
    for (const auto& b : compartidos.bancos)
        if (b[0] == banco)
            return b;
    compartidos.bancos.push_back({banco, Format(banco, QStringLiteral("0000")), m.Nombre_Banco(banco)});
    return compartidos.bancos.back();
}

const QString& Consola::Nombre_Servicio(int16_t servicio)
{
    auto& nombres = compartidos.nombres;
    const QString& nombre = m.Servicios_T(servicio)[2]; // a code out of range stops here
    if (nombres.empty())
        nombres.resize(size_t(m.Servicios_T.UBound()) + 1);
    QString& t = nombres[size_t(servicio)];
    if (t.isNull())
        t = nombre.left(14);
    return t;
}

namespace {
// A name of the cache looked up once per code: later rows read it here, and
// the shared J is left as the look-up left it.
template <class Guardados, class Buscar>
const QString& nombreGuardado(Guardados& guardados, int16_t codigo, Valor& J, Buscar buscar)
{
    auto it = guardados.find(codigo);
    if (it == guardados.end()) {
        QString nombre = buscar(codigo);
        it = guardados.insert(codigo, {std::move(nombre), J});
    }
    J = it->j;
    return it->nombre;
}
} // namespace

const QString& Consola::Nombre_Proveedor(int16_t proveedor)
{
    return nombreGuardado(compartidos.proveedores, proveedor, m.J, [this](int16_t c) { return m.Nombre_Proveedor(c); });
}

const QString& Consola::Nombre_Cliente(int16_t cliente)
{
    return nombreGuardado(compartidos.clientes, cliente, m.J, [this](int16_t c) { return m.Nombre_Cliente(c); });
}

double Consola::Comision(int16_t fila)
{
    auto& c = compartidos.comisiones;
    const QString& texto = m.Proveedores_T(fila, 4); // a row out of the cache stops here
    if (size_t(fila) >= c.size())
        c.resize(size_t(fila) + 1, std::nan(""));
    if (std::isnan(c[size_t(fila)]))
        c[size_t(fila)] = CDbl(texto);
    return c[size_t(fila)];
}

const Valor& Consola::Campo(int ordinal) const
{
    if (ordinal < 0)
        throw FalloEjecucion::campoNoEncontrado(QString());
    return m.Rs->Fields(ordinal);
}

void Consola::Prepara_Campos()
{
    compartidos = Compartidos();
    const auto pos = [this](const char* nombre) {
        const QString n = QString::fromLatin1(nombre);
        return m.Rs->TieneCampo(n) ? m.Rs->Ordinal(n) : -1;
    };
    Campos& c = campos;
    c.Fecha = pos("Fecha");
    c.secuenciA = pos("secuenciA");
    c.C_CLIENTE = pos("C_CLIENTE");
    c.Cliente = pos("Cliente");
    c.Enviado = pos("Enviado");
    c.recibido = pos("recibido");
    c.C_proveedor = pos("C_proveedor");
    c.bancozelle = pos("bancozelle");
    c.tipo_servicio = pos("tipo_servicio");
    c.C_Banco = pos("C_Banco");
    c.confirmacion = pos("confirmacion");
    c.Pago = pos("Pago");
    c.referencia = pos("referencia");
    c.operadora = pos("operadora");
    c.tipo_operacion = pos("tipo_operacion");
    c.OBS = pos("OBS");
    c.Ganancia = pos("Ganancia");
    c.G1 = pos("G1");
    c.G2 = pos("G2");
    c.G3 = pos("G3");
    c.fecha_pago = pos("fecha_pago");
    c.hora_pago = pos("hora_pago");
    c.dolar1 = pos("dolar1");
    c.dolar2 = pos("dolar2");
}

void Consola::CONSULTAR()
{
    // Each query works with the prices and the cache of the moment.
    LOGIN::Carga_Parametros(m);
    Precios_Del_Momento();
    RelojDeArena reloj;

    Total_Enviado = Total_Recibido = Total_Estimado = Total_Pagado = 0;
    Total_G1 = Total_G2 = Total_G3 = 0;
    Total_Filas = 0;
    Suma_Sel = 0;
    Text4->clear();
    ARMAR_GRID();

    const auto marcada = [](const auto& botones) {
        for (size_t i = 0; i < botones.size(); ++i)
            if (botones[i]->isChecked())
                return int(i);
        return 0;
    };
    m.K = marcada(Option1);
    m.L = marcada(Option2);
    const QString servicio = Combo1->currentText().left(2);
    m.Cuenta = EsNumerico(servicio) ? CLng(CDbl(servicio)) : 0;

    QString desde = Module1::Fecha_AMD(Fecha1->date().toString(QStringLiteral("dd/MM/yyyy")));
    // A search by name runs over everything since January 2023.
    if (Check2->isChecked() && Text2->text().length() >= 1) {
        m.Cuenta = 0;
        m.K = 0;
        desde = QStringLiteral("202301");
    }

    m.Cierra_Rs();
    m.Prepara_Comando(Procedimiento());
    m.Comando.Parameters(1) = Valor(desde);
    m.Comando.Parameters(2) = Valor(Module1::Fecha_AMD(Fecha2->date().toString(QStringLiteral("dd/MM/yyyy"))));
    m.Comando.Parameters(3) = Valor(int(CInt(m.K.aDouble())));
    m.Comando.Parameters(4) = Valor(int(CInt(m.L.aDouble())));
    m.Comando.Parameters(5) = Valor(Text2->text().trimmed());
    m.Comando.Parameters(6) = Valor(Text3->text().trimmed());
    m.Comando.Parameters(7) = Valor(int(m.Cuenta));
    // The rows go into the matrix as the server reads them: a long range is
    // never held twice, once as the result and once as the grid's cells.
    const int ultima = Celdas.UpperBound(2);
    int fila = -1;
    m.I = fila;
    m.Ejecuta_Comando_Por_Filas([this] { Prepara_Campos(); },
                                [&] {
                                    ++fila;
                                    m.I = fila;
                                    Celdas.ReDim(0, fila, 0, ultima);
                                    Llena_Fila(fila);
                                });
    // What this screen saw of each row: its saves and deletes are checked against it.
    Versiones_Cargadas = m.Conexion.VersionesDeLaCarga();

    Escribe_Pies();
    m.Cierra_Rs();
    Total_Estimado = 0;
    GRID->Array(Celdas);

    Text2->clear();
    Text3->clear();
    Text6->clear();
    Check2->setChecked(true);
    m.Sel_Cuenta = 0;
    m.Sel_Total = 0;
    Suma_Sel = 0;
    GRID->setBookmark(fila);
}

Consola::Registro Consola::Lee_Registro() const
{
    const Campos& c = campos;
    Registro r;
    r.banco = Campo(c.C_Banco).aTexto();
    r.devuelta = r.banco == QLatin1String("7777");
    r.enviado = Campo(c.Enviado).aDouble();
    r.recibido = Campo(c.recibido).aDouble();
    r.pago = Campo(c.Pago).aDouble();
    r.servicio = CInt(Campo(c.tipo_servicio).aDouble());
    r.proveedor = CInt(Campo(c.C_proveedor).aDouble());
    return r;
}

void Consola::Llena_Fila(int i)
{
    const Campos& c = campos;
    const auto [banco, devuelta, enviado, recibido, pago, servicio, proveedor] = Lee_Registro();

    Celdas(i, colFecha) = Fecha_Vista(colFecha, Campo(c.Fecha).aTexto());
    Celdas(i, colSec) = Codigo(Campo(c.secuenciA).aDouble());
    Celdas(i, colCodCliente) = Codigo(Campo(c.C_CLIENTE).aDouble());
    Celdas(i, colCliente) = Campo(c.Cliente).aTexto();
    Celdas(i, colEnvio) = Cifra(fEnvio, enviado);
    Celdas(i, colRecibido) = Cifra(f3_0_00, recibido);
    Celdas(i, colCodProveedor) = Codigo(proveedor);
    QString nombreProveedor = Nombre_Proveedor(proveedor);
    if (nombreProveedor == QLatin1String("0"))
        nombreProveedor.clear();
    Celdas(i, colProveedor) = nombreProveedor;

    // An unpaid row of a service in another currency shows its dollars at today's price.
    if (servicio > 49 && banco.isEmpty()) {
        m.Monto_Conv = Num(i, colEnvio);
        m.Convierte_Dolar(m.Monto_Conv, servicio);
        Celdas(i, colRecibido) = Cifra(f2_0_00, m.Monto_Usd);
    }
    Celdas(i, colFactor) = Cifra(fTasa, Campo(c.confirmacion).aDouble());
    m.K = servicio;
    if (banco.isEmpty()) {
        // Unpaid: the price of the moment, and the estimate at it.
        const double precio = m.Monto_T(servicio);
        Celdas(i, colFactor) = Cifra(fTasa, precio);
        const double bs = (servicio == 1 || servicio == 9 ? recibido : enviado) * precio;
        const double estimado = servicio < 50 ? Int(bs) : bs;
        Celdas(i, colEstimado) = Cifra(fMiles00, estimado);
        Total_Estimado += estimado;
    }
    if (!banco.isEmpty())
        Celdas(i, colPagado) = Cifra(fMiles00, pago);

    Llena_Datos(i, banco, servicio);
    Celdas(i, colServicio) = Nombre_Servicio(servicio);

    double ganancia = Campo(c.Ganancia).aDouble();
    double g1 = Campo(c.G1).aDouble(), g2 = Campo(c.G2).aDouble(), g3 = Campo(c.G3).aDouble();
    if (devuelta)
        ganancia = g1 = g2 = g3 = 0;
    Total_G1 += g1;
    Total_G2 += g2;
    Total_G3 += g3;
    Celdas(i, colPorcentaje) = Cifra(f3_0_00, ganancia);
    Celdas(i, colG2) = Cifra(f3_0_00, g2);
    Celdas(i, colG1) = Cifra(f2_0_00, g1);
    Celdas(i, colG2Oculta) = Cifra(f2_0_00, g2);
    Celdas(i, colG3) = Cifra(f2_0_00, g3);

    // The payment's date, gift and prices, and the Zelle bank, where the grid has them.
    if (Celdas.UpperBound(2) >= colUltima) {
        const QString fechaPago = Campo(c.fecha_pago).aTexto();
        if (fechaPago.size() > 1 && banco.size() > 1) {
            Celdas(i, colFechaPago) = Fecha_Vista(colFechaPago, fechaPago);
            Celdas(i, colHoraPago) = Campo(c.hora_pago).aTexto();
        }
        Celdas(i, colRegalo) = QString();
        Celdas(i, colDolar1) = QString();
        Celdas(i, colDolar2) = QString();
        if (banco.size() > 1) {
            // The provider's commission, read by the code used as the row of the cache.
            Celdas(i, colRegalo) = Celda::Texto_De(redondea4(recibido * Comision(proveedor) / 100));
            Celdas(i, colDolar1) = Cifra(f2_0_00, Campo(c.dolar1).aDouble());
            Celdas(i, colDolar2) = Cifra(f2_0_00, Campo(c.dolar2).aDouble());
        }
        Celdas(i, colBancoZelle) = Campo(c.bancozelle).aTexto();
    }

    if (!devuelta) {
        Total_Enviado += enviado;
        Total_Recibido += recibido;
    }
    if (!banco.isEmpty())
        Total_Pagado += pago;
    ++Total_Filas;
    if (devuelta) {
        Celdas(i, colPorcentaje) = QString();
        Celdas(i, colG2) = QString();
    }
}

void Consola::Llena_Datos(int i, const QString& banco, int16_t servicio)
{
    const Campos& c = campos;
    const auto& vistaBanco = Banco_Vista(banco);
    Celdas(i, colCodBanco) = vistaBanco[1];
    Celdas(i, colBanco) = vistaBanco[2];
    Celdas(i, colReferencia) = Campo(c.referencia).aTexto();
    Celdas(i, colOperadora) = Campo(c.operadora).aTexto();
    const Valor& operacion = Campo(c.tipo_operacion);
    Celdas(i, colTipoOp) = operacion.esTexto() ? operacion.aTexto() : Cifra(fTexto, operacion.aDouble());
    Celdas(i, colCodServicio) = Cifra(f00, servicio);
    Celdas(i, colNota) = Campo(c.OBS).aTexto();
    Celdas(i, colSel) = 0;
}

void Consola::Pies_Comunes()
{
    const QString dinero = QStringLiteral("###,##0.00");
    GRID->Columns(colRecibido).setFooterText(Format(Total_Recibido, QStringLiteral("#,###,##0.00")));
    GRID->Columns(colPagado).setFooterText(Format(Total_Pagado, dinero));
    GRID->Columns(colCodCliente).setFooterText(Format(double(Total_Filas), QStringLiteral("###,##0")));
    GRID->Columns(colEstimado).setFooterText(Format(Total_Estimado, dinero));
    GRID->Columns(colFecha).setFooterText(QString());
}

void Consola::Escribe_Pies()
{
    const QString dinero = QStringLiteral("###,##0.00");
    Pies_Comunes();
    GRID->Columns(colG2).setFooterText(Format(Total_G2, dinero));
    GRID->Columns(colG1).setFooterText(Format(Total_G1, dinero));
    GRID->Columns(colG2Oculta).setFooterText(Format(Total_G2, dinero));
    GRID->Columns(colG3).setFooterText(Format(Total_G3, dinero));
}

void Consola::GRID_HeadClick(int col)
{
    const bool texto = col == colFecha || col == colCliente || col == colProveedor || col == colServicio;
    GRID->ordenarPorColumna(col, !texto);
}
