#include "conceptos.h"
#include "mensajes.h"

#include <QLineEdit>
#include <QPushButton>

CONCEPTOS::CONCEPTOS(Module1& modulo, MDIForm1& p)
    : Catalogo(modulo, p, QStringLiteral("CONCEPTOS"), QStringLiteral("CONCEPTOS RECIBOS DE PAGO"), {100, 5001, 10050, 9500})
{
    lista_ = QStringLiteral("TRU_CONCEPTOS");
    modifica_ = QStringLiteral("TRU_MOD_Conceptos");
    columnas_ = {
        // in the order of Columna
        {QStringLiteral("Codigo"), QStringLiteral("C_CONCEPTO"), QStringLiteral("000"), 1000, Alineacion::Centro,
         Alineacion::Centro, false},
        {QStringLiteral("Descripcion"), QStringLiteral("D_CONCEPTO"), QStringLiteral("&"), 7000},
        {QString(), QString(), QString(), 400, Alineacion::General, Alineacion::General, true, false},
    };
    bandera_ = colMarca;
    banderaInicial_ = QStringLiteral("0");
    enviadas_ = {colCodigo, colDescripcion};
    recargaCache_ = true;

    rejilla(10, 10, 590, 440);
    etiqueta(rotConcepto, QStringLiteral("Concepto"), 10, 462, 90);
    campo(txtConcepto, QStringLiteral("Concepto"), 100, 462, 500, 100);
    Procesar = boton(QStringLiteral("Procesar"), QStringLiteral("Procesar Ingreso"), 10, 500, 190);
    MODIFICAR = boton(QStringLiteral("MODIFICAR"), QStringLiteral("Procesar Modificaciones"), 210, 500, 190);
    INCLUIR = boton(QStringLiteral("INCLUIR"), QStringLiteral("Incluir Concepto"), 410, 500, 190);
    SALIR = boton(QStringLiteral("SALIR"), QStringLiteral("Salir"), 410, 550, 190);

    connect(Procesar, &QPushButton::clicked, this, [this] { Procesar_Click(); });
    connect(MODIFICAR, &QPushButton::clicked, this, [this] { MODIFICAR_Click(); });
    connect(SALIR, &QPushButton::clicked, this, [this] { Unload(); });
}

void CONCEPTOS::Carga_Grid()
{
    Text1[txtConcepto]->clear();
    Catalogo::Carga_Grid();
}

void CONCEPTOS::Procesar_Click()
{
    // Blanks are a description: only an empty field is refused.
    if (Text1[txtConcepto]->text().isEmpty()) {
        Mensajes::MsgBox(QStringLiteral("Indique la Descripcipón del Concepto"), Mensajes::vbInformation);
        Text1[txtConcepto]->setFocus();
        return;
    }
    Ingresa(QStringLiteral("TRU_IN_CONCEPTOS"), {Valor(Text1[txtConcepto]->text())}, true);
}
