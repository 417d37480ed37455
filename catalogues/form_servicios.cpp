#include "form_servicios.h"
#include "mensajes.h"
#include "module1.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "controles.h"

using Mensajes::MsgBox;

namespace {
QString conComa(QString texto) { return texto.replace(QLatin1Char('.'), QLatin1Char(',')); }
} // namespace

Form_SERVICIOS::Form_SERVICIOS(Module1& modulo, MDIForm1& p)
    : Catalogo(modulo, p, QStringLiteral("Form_SERVICIOS"), QStringLiteral("Form_SERVICIOS"), {100, 4500, 11000, 9700})
{
    lista_ = QStringLiteral("TRU_servicios");
    modifica_ = QStringLiteral("TRU_MOD_servicios_01");
    const auto centro = Alineacion::Centro;
    columnas_ = {
        {QStringLiteral("Codigo"), QStringLiteral("C_SERVIcio"), QStringLiteral("00"), 1000, centro, centro, false},
        {QStringLiteral("Descripcion"), QStringLiteral("D_SERVIcio"), QStringLiteral("&"), 3000},
        {QStringLiteral("Porcen."), QStringLiteral("porcentaje"), QStringLiteral("#0.00"), 900, centro, centro},
        {QStringLiteral("Decimal"), QStringLiteral("decimales"), QStringLiteral("&"), 900, centro, centro},
        {QString(), QString(), QString(), 400, Alineacion::General, Alineacion::General, true, false},
        {QStringLiteral("Sw-Cal"), QStringLiteral("sw_calculos"), QStringLiteral("&"), 1000, centro, centro},
        {QStringLiteral("Letra"), QStringLiteral("letra"), QStringLiteral("&"), 1000, centro, centro},
        {QStringLiteral("Status"), QStringLiteral("St_servicio"), QStringLiteral("&"), 1000, centro, centro},
    };
    bandera_ = 4;
    banderaInicial_ = QStringLiteral("0");
    recargaCache_ = true;

    rejilla(10, 10, 690, 400);
    etiqueta(2, QStringLiteral("Servicio"), 10, 424, 80);
    campo(3, QStringLiteral("Servicio"), 95, 424, 250, 60);
    etiqueta(0, QStringLiteral("Porcent."), 365, 424, 70);
    campo(1, QStringLiteral("Porcent."), 440, 424, 80, 10);
    etiqueta(4, QStringLiteral("Decimales"), 10, 458, 80);
    campo(5, QStringLiteral("Decimales"), 95, 458, 50, 2);
    etiqueta(7, QStringLiteral("Letra"), 165, 458, 50);
    campo(6, QStringLiteral("Letra"), 220, 458, 30, 1);
    Frame1 = new QGroupBox(QStringLiteral("Sw-Calculos"), this);
    Frame1->setGeometry(540, 418, 160, 64);
    Controles::Nombrar(Frame1, QStringLiteral("Frame1"), QStringLiteral("Sw-Calculos"));
    auto* grupo = new QButtonGroup(this);
    grupo->setExclusive(false); // after a load neither option is on
    for (int i : {1, 2}) {
        auto* o = new QRadioButton(QString::number(i), Frame1);
        o->setGeometry(20 + (i - 1) * 70, 28, 60, 24);
        o->setAutoExclusive(false);
        Controles::Nombrar(o, QStringLiteral("Option1"), i, QString::number(i));
        grupo->addButton(o, i);
        Option1.insert(i, o);
    }
    // Exclusive by hand: choosing one puts the other off.
    connect(grupo, &QButtonGroup::idClicked, this, [this](int id) {
        Option1[id]->setChecked(true);
        Option1[3 - id]->setChecked(false);
    });

    Procesar = boton(QStringLiteral("Procesar"), QStringLiteral("Procesar Ingreso"), 10, 500, 220);
    MODIFICAR = boton(QStringLiteral("MODIFICAR"), QStringLiteral("Procesar Modificaciones"), 245, 500, 220);
    INCLUIR = boton(QStringLiteral("INCLUIR"), QStringLiteral("Incluir Concepto"), 480, 500, 220);
    SALIR = boton(QStringLiteral("SALIR"), QStringLiteral("Salir"), 480, 560, 220);

    connect(Procesar, &QPushButton::clicked, this, [this] { Procesar_Click(); });
    connect(MODIFICAR, &QPushButton::clicked, this, [this] { MODIFICAR_Click(); });
    connect(SALIR, &QPushButton::clicked, this, [this] { Unload(); });
}

void Form_SERVICIOS::Carga_Grid()
{
    for (int i : {3, 1, 5, 6})
        Text1[i]->clear();
    Option1[1]->setChecked(false);
    Option1[2]->setChecked(false);
    Catalogo::Carga_Grid();
}

void Form_SERVICIOS::Procesar_Click()
{
    auto falta = [](QLineEdit* campo, const char* texto) {
        MsgBox(QString::fromUtf8(texto), Mensajes::vbInformation);
        if (campo)
            campo->setFocus();
    };
    if (Text1[3]->text().isEmpty())
        return falta(Text1[3], "Indique la Descripcipón del Servicio");
    if (Text1[1]->text().isEmpty())
        return falta(Text1[1], "Indique Porcentaje de descuento del Servicio");
    Text1[5]->setText(Text1[5]->text().trimmed());
    if (Text1[5]->text().isEmpty())
        return falta(Text1[5], "Indique Numero de decimales del Servicio");
    Text1[1]->setText(conComa(Text1[1]->text()));
    if (!Option1[1]->isChecked() && !Option1[2]->isChecked())
        return falta(nullptr, "Indique tipo de calculo del Servicio (Sw-calculo)");
    Text1[6]->setText(Text1[6]->text().trimmed().toUpper());
    if (Text1[6]->text().isEmpty())
        return falta(Text1[6], "Indique Letra del Servicio");

    // A letter already held is warned about, once per holder, and the service
    // is stored all the same: the operator mends it in the grid.
    for (int i = 1; i <= m.N_Servicios; ++i) {
        if (Text1[6]->text() == m.Servicios_T(i)[5].trimmed()) {
            MsgBox(QStringLiteral("Error : la letra ya esta asignada al servicio = ") + QString::number(i));
            Text1[6]->setFocus();
        }
    }
    m.I = Option1[2]->isChecked() ? 2 : 1;
    Ingresa(QStringLiteral("TRU_IN_SERVICIOS_02"),
            {Valor(Text1[3]->text()), Valor(Text1[1]->text()), Valor(Text1[5]->text()), m.I, Valor(Text1[6]->text())}, true);
}

QList<Valor> Form_SERVICIOS::Valores_Modificar(int fila)
{
    Celdas.Value(fila, 2) = conComa(Celdas.Value(fila, 2).texto());
    auto celda = [&](int col) { return Celdas.Value(fila, col).texto().trimmed(); };
    return {Valor(celda(0)), Valor(celda(1)), Valor(celda(2)), Valor(celda(3)),
            Valor(celda(5)), Valor(celda(6).toUpper()), Valor(celda(7))};
}

void Form_SERVICIOS::MODIFICAR_Click()
{
    Reloj_De_Arena(true);
    Catalogo::MODIFICAR_Click();
    Reloj_De_Arena(false);
}
