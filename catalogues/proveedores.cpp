#include "proveedores.h"
#include "formato.h"
#include "module1.h"

#include <QLineEdit>
#include <QPushButton>

Proveedores::Proveedores(Module1& modulo, MDIForm1& p)
    : Catalogo(modulo, p, QStringLiteral("Proveedores"), QStringLiteral("Proveedores (grupos)"), {100, 1500, 18050, 9500})
{
    lista_ = QStringLiteral("TRU_proveedor");
    modifica_ = QStringLiteral("TRU_MOD_proveedor_01");
    const auto centro = Alineacion::Centro;
    const auto general = Alineacion::General;
    const auto derecha = Alineacion::Derecha;
    columnas_ = {
        // in the order of Columna
        {QStringLiteral("Codigo"), QStringLiteral("C_proveedor"), QStringLiteral("00"), 1000, centro, centro, false},
        {QStringLiteral("Descripcion"), QStringLiteral("D_proveedor"), QStringLiteral("&"), 3000, general, general},
        {QStringLiteral("Clave"), QStringLiteral("clave_pro"), QStringLiteral("&"), 800, general, centro},
        {QStringLiteral("Mod"), QString(), QString(), 400, general, centro, true, false},
        {QStringLiteral("% Gan"), QStringLiteral("porgan"), QStringLiteral("0"), 800, centro, general},
        {QStringLiteral("Comision"), QStringLiteral("Comision"), QStringLiteral("#,##0.00"), 1000, centro, centro},
        {QStringLiteral("Regalo"), QStringLiteral("Regalo"), QStringLiteral("#,##0.0000"), 1200, derecha, centro},
        {QStringLiteral("Ult.Regalo"), QString(), QString(), 1200, derecha, centro},
    };
    bandera_ = colMod;
    camposDeIngreso_ = {rotCodigo, txtCodigo, rotDescripcion, txtDescripcion, txtClave, rotClave};

    rejilla(10, 10, 640, 560);
    GRID->setColumnFooters(true);
    const int x = 670;
    etiqueta(rotCodigo, QStringLiteral("Código"), x, 20, 100);
    campo(txtCodigo, QStringLiteral("Código"), x + 110, 20, 60, 4);
    etiqueta(rotDescripcion, QStringLiteral("Descripción"), x, 54, 100);
    campo(txtDescripcion, QStringLiteral("Descripción"), x + 110, 54, 300, 30);
    etiqueta(rotClave, QStringLiteral("Clave Grupo"), x, 88, 100);
    campo(txtClave, QStringLiteral("Clave Grupo"), x + 110, 88, 80, 5);
    INCLUIR = boton(QStringLiteral("INCLUIR"), QStringLiteral("Incluir Proveedor"), x, 130, 200);
    Procesar = boton(QStringLiteral("Procesar"), QStringLiteral("Procesar Ingreso"), x + 210, 130, 200);
    MODIFICAR = boton(QStringLiteral("MODIFICAR"), QStringLiteral("Procesar Modificaciones"), x, 170, 200);
    SALIR = boton(QStringLiteral("SALIR"), QStringLiteral("Salir"), x, 540, 200);

    connect(INCLUIR, &QPushButton::clicked, this, [this] { INCLUIR_Click(); });
    connect(Procesar, &QPushButton::clicked, this, [this] { Procesar_Click(); });
    connect(MODIFICAR, &QPushButton::clicked, this, [this] { MODIFICAR_Click(); });
    connect(SALIR, &QPushButton::clicked, this, [this] { Unload(); });
}

void Proveedores::Carga_Grid()
{
    Total_Regalo = 0;
    Total_Ult_Regalo = 0;
    Catalogo::Carga_Grid();
    GRID->Columns(colRegalo).setFooterText(Format(Total_Regalo, QStringLiteral("###,##0.00")));
    GRID->Columns(colUltRegalo).setFooterText(Format(Total_Ult_Regalo, QStringLiteral("###,##0.00")));
}

void Proveedores::Fila_Leida(int fila)
{
    const double ultimo = m.Rs->Fields(QStringLiteral("ultregalo")).aDouble();
    if (ultimo > 0)
        Celdas.Value(fila, colUltRegalo) = Format(ultimo, QStringLiteral("#,##0.0000"));
    Total_Regalo += m.Rs->Fields(QStringLiteral("Regalo")).aDouble();
    Total_Ult_Regalo += ultimo;
}

void Proveedores::INCLUIR_Click()
{
    Modo_Ingreso({txtCodigo, txtDescripcion, txtClave}, {rotDescripcion, txtDescripcion, txtClave, rotClave}, txtDescripcion);
}

void Proveedores::Procesar_Click()
{
    Ingresa(QStringLiteral("TRU_IN_proveedor_01"), {Valor(Text1[txtDescripcion]->text()), Valor(Text1[txtClave]->text())}, false);
}

// The amounts leave with a decimal comma; a cell typed with a point is mended
// on the way, and the server reads the thousands marks this leaves behind.
QList<Valor> Proveedores::Valores_Modificar(int fila)
{
    auto celda = [&](int col) { return Celdas.Value(fila, col).texto().trimmed(); };
    auto importe = [&](int col) { return Valor(celda(col).replace(QLatin1Char('.'), QLatin1Char(','))); };
    return {Valor(celda(colCodigo)),   Valor(celda(colDescripcion)), Valor(celda(colClave)),
            Valor(celda(colGanancia)), importe(colComision),         importe(colRegalo)};
}
