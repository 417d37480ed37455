#include "bancos.h"

#include <QLineEdit>
#include <QPushButton>

BANCOS::BANCOS(Module1& modulo, MDIForm1& p)
    : Catalogo(modulo, p, QStringLiteral("BANCOS"), QStringLiteral("Bancos"), {100, 3001, 15050, 9500})
{
    lista_ = QStringLiteral("TRU_BANCOS");
    columnas_ = {
        // in the order of Columna
        {QStringLiteral("Codigo"), QStringLiteral("C_Banco"), QStringLiteral("0000"), 1000, Alineacion::Centro,
         Alineacion::Centro},
        {QStringLiteral("Descripcion"), QStringLiteral("D_banco"), QStringLiteral("&"), 4000},
    };
    camposDeIngreso_ = {rotCodigo, txtCodigo, rotDescripcion, txtDescripcion};

    rejilla(10, 10, 370, 560);
    etiqueta(rotCodigo, QStringLiteral("Código"), 400, 20, 100);
    campo(txtCodigo, QStringLiteral("Código"), 510, 20, 70, 4);
    etiqueta(rotDescripcion, QStringLiteral("Descripción"), 400, 54, 100);
    campo(txtDescripcion, QStringLiteral("Descripción"), 510, 54, 330);
    INCLUIR = boton(QStringLiteral("INCLUIR"), QStringLiteral("Incluir Banco"), 400, 100, 200);
    Procesar = boton(QStringLiteral("Procesar"), QStringLiteral("Procesar Ingreso"), 610, 100, 200);
    SALIR = boton(QStringLiteral("SALIR"), QStringLiteral("Salir"), 400, 540, 200);

    connect(INCLUIR, &QPushButton::clicked, this, [this] { INCLUIR_Click(); });
    connect(Procesar, &QPushButton::clicked, this, [this] { Procesar_Click(); });
    connect(SALIR, &QPushButton::clicked, this, [this] { Unload(); });
}

void BANCOS::INCLUIR_Click()
{
    Modo_Ingreso({txtCodigo, txtDescripcion}, {rotCodigo, txtCodigo, rotDescripcion, txtDescripcion}, txtCodigo);
}

// No field is checked: the server takes the code and the name as typed.
void BANCOS::Procesar_Click()
{
    Ingresa(QStringLiteral("TRU_IN_BANCOS"), {Valor(Text1[txtCodigo]->text()), Valor(Text1[txtDescripcion]->text())}, false);
}
