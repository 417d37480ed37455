#include "servicios_usdt.h"
#include "controles.h"
#include "mensajes.h"
#include "module1.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

SERVICIOS_USDT::SERVICIOS_USDT(Module1& modulo, MDIForm1& p)
    : Catalogo(modulo, p, QStringLiteral("SERVICIOS_USDT"), QStringLiteral("SERVICIOS_USDT"), {100, 5001, 10050, 9500})
{
    lista_ = QStringLiteral("TRU_servicios_USDT");
    modifica_ = QStringLiteral("TRU_MOD_servicios_USDT");
    const auto c = Alineacion::Centro;
    columnas_ = {
        // in the order of Columna
        {QStringLiteral("Codigo"), QStringLiteral("C_SERVIcio"), QStringLiteral("00"), 1000, c, c, false},
        {QStringLiteral("Descripcion"), QStringLiteral("D_SERVIcio"), QStringLiteral("&"), 3000, Alineacion::General, c},
        {QStringLiteral("Precio\rCompra"), QStringLiteral("compra"), QStringLiteral("#0.0000"), 1400, c, c},
        {QStringLiteral("Precio\rVenta"), QStringLiteral("venta"), QStringLiteral("0.0000"), 1400, c, c},
        {QString(), QString(), QString(), 200, Alineacion::General, Alineacion::General, false, false},
    };
    bandera_ = colMarca;
    banderaInicial_ = QStringLiteral("0");
    enviadas_ = {colCodigo, colDescripcion, colCompra, colVenta};

    for (int i : {lblAhora, lblUltima}) {
        auto* l = new QLabel(this);
        l->setGeometry(10, i == lblAhora ? 8 : 446, 640, 22);
        Controles::Nombrar(l, QStringLiteral("Label1"), i, QString());
        Label1.insert(i, l);
    }
    rejilla(10, 36, 640, 400);
    uev = new QLabel(QStringLiteral("Nuevo Servicio"), this);
    uev->setGeometry(10, 478, 300, 22);
    Controles::Nombrar(uev, QStringLiteral("uev"), QStringLiteral("Nuevo Servicio"));
    Text2 = new QLineEdit(this);
    Text2->setGeometry(10, 500, 300, 24);
    Text2->setMaxLength(60);
    Controles::Nombrar(Text2, QStringLiteral("Text2"), QStringLiteral("Nuevo Servicio"));

    Procesar = boton(QStringLiteral("Procesar"), QStringLiteral("Procesar Ingreso"), 330, 496, 200);
    ACTUALIZAR = boton(QStringLiteral("ACTUALIZAR"), QStringLiteral("Actualizar Información"), 10, 540, 200);
    INCLUIR = boton(QStringLiteral("INCLUIR"), QStringLiteral("Incluir Concepto"), 220, 540, 200);
    SALIR = boton(QStringLiteral("SALIR"), QStringLiteral("Salir"), 450, 540, 200);

    connect(Procesar, &QPushButton::clicked, this, [this] { Procesar_Click(); });
    connect(ACTUALIZAR, &QPushButton::clicked, this, [this] { ACTUALIZAR_Click(); });
    connect(SALIR, &QPushButton::clicked, this, [this] { Unload(); });
}

void SERVICIOS_USDT::Rotula_Ultima()
{
    Label1[lblUltima]->setText(QStringLiteral("Ultima actualización : ") + m.Fecha_Compraventas);
}

void SERVICIOS_USDT::Form_Activate()
{
    Label1[lblAhora]->setText(QStringLiteral("Actualización Precios de Compra/Venta USDT  al : ") +
                              m.reloj().toString(QStringLiteral("dd/MM/yyyy HH:mm:ss")));
    Rotula_Ultima();
    Carga_Grid();
}

void SERVICIOS_USDT::Carga_Grid()
{
    Text2->clear();
    Catalogo::Carga_Grid();
}

QList<Valor> SERVICIOS_USDT::Valores_Modificar(int fila)
{
    // The prices reach the server with the decimal comma; a typed point becomes one.
    for (int col : {colCompra, colVenta})
        Celdas.Value(fila, col) = Celdas.Value(fila, col).texto().replace(QLatin1Char('.'), QLatin1Char(','));
    // Code, description and the two prices: the divide flag is left to the server's default.
    return Catalogo::Valores_Modificar(fila);
}

void SERVICIOS_USDT::ACTUALIZAR_Click()
{
    MODIFICAR_Click();
    m.Fecha_Compraventas = m.reloj().toString(QStringLiteral("dd/MM/yyyy HH:mm:ss"));
    Rotula_Ultima();
}

void SERVICIOS_USDT::Procesar_Click()
{
    if (Text2->text().isEmpty()) {
        Mensajes::MsgBox(QStringLiteral("Indique la Descripcipón del Servicio"), Mensajes::vbInformation);
        Text2->setFocus();
        return;
    }
    Ingresa(QStringLiteral("TRU_IN_SERVICIOS_USDT"), {Valor(Text2->text().toUpper())}, false);
}
