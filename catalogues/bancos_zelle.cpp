#include "bancos_zelle.h"

#include <QPushButton>

BANCOS_ZELLE::BANCOS_ZELLE(Module1& modulo, MDIForm1& p)
    : Catalogo(modulo, p, QStringLiteral("BANCOS_ZELLE"), QStringLiteral("Bancos Zelle"), {1300, 5201, 10050, 6500})
{
    lista_ = QStringLiteral("TRU_BANCOS_ZELLE");
    modifica_ = QStringLiteral("TRU_MOD_bancos_zelle");
    columnas_ = {
        // in the order of Columna
        {QStringLiteral("Codigo"), QStringLiteral("C_Banco"), QStringLiteral("0"), 1000, Alineacion::Centro, Alineacion::Centro,
         false},
        {QStringLiteral("Descripcion"), QStringLiteral("D_banco"), QStringLiteral("&"), 4000},
        {QString(), QString(), QString(), 400, Alineacion::General, Alineacion::General, true, false},
    };
    bandera_ = colMarca;
    banderaInicial_ = QStringLiteral("0");
    enviadas_ = {colCodigo, colDescripcion};
    recargaCache_ = true;

    rejilla(10, 10, 370, 360);
    INCLUIR = boton(QStringLiteral("INCLUIR"), QStringLiteral("Incluir Concepto"), 400, 20, 200);
    MODIFICAR = boton(QStringLiteral("MODIFICAR"), QStringLiteral("Procesar Modificaciones"), 400, 60, 200);
    SALIR = boton(QStringLiteral("SALIR"), QStringLiteral("Salir"), 400, 340, 200);

    connect(MODIFICAR, &QPushButton::clicked, this, [this] { MODIFICAR_Click(); });
    connect(SALIR, &QPushButton::clicked, this, [this] { Unload(); });
}
