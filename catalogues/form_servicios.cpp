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
        // in the order of Columna
        {QStringLiteral("Codigo"), QStringLiteral("C_SERVIcio"), QStringLiteral("00"), 1000, centro, centro, false},
        {QStringLiteral("Descripcion"), QStringLiteral("D_SERVIcio"), QStringLiteral("&"), 3000},
        {QStringLiteral("Porcen."), QStringLiteral("porcentaje"), QStringLiteral("#0.00"), 900, centro, centro},
        {QStringLiteral("Decimal"), QStringLiteral("decimales"), QStringLiteral("&"), 900, centro, centro},
        {QString(), QString(), QString(), 400, Alineacion::General, Alineacion::General, true, false},
        {QStringLiteral("Sw-Cal"), QStringLiteral("sw_calculos"), QStringLiteral("&"), 1000, centro, centro},
        {QStringLiteral("Letra"), QStringLiteral("letra"), QStringLiteral("&"), 1000, centro, centro},
        {QStringLiteral("Status"), QStringLiteral("St_servicio"), QStringLiteral("&"), 1000, centro, centro},
    };
    bandera_ = colMarca;
    banderaInicial_ = QStringLiteral("0");
    recargaCache_ = true;

    rejilla(10, 10, 690, 400);
    etiqueta(rotServicio, QStringLiteral("Servicio"), 10, 424, 80);
    campo(txtServicio, QStringLiteral("Servicio"), 95, 424, 250, 60);
    etiqueta(rotPorcentaje, QStringLiteral("Porcent."), 365, 424, 70);
    campo(txtPorcentaje, QStringLiteral("Porcent."), 440, 424, 80, 10);
    etiqueta(rotDecimales, QStringLiteral("Decimales"), 10, 458, 80);
    campo(txtDecimales, QStringLiteral("Decimales"), 95, 458, 50, 2);
    etiqueta(rotLetra, QStringLiteral("Letra"), 165, 458, 50);
    campo(txtLetra, QStringLiteral("Letra"), 220, 458, 30, 1);
    Frame1 = new QGroupBox(QStringLiteral("Sw-Calculos"), this);
    Frame1->setGeometry(540, 418, 160, 64);
    Controles::Nombrar(Frame1, QStringLiteral("Frame1"), QStringLiteral("Sw-Calculos"));
    auto* grupo = new QButtonGroup(this);
    grupo->setExclusive(false); // after a load neither option is on
    for (int i : {swDolar, swUsdt}) {
        auto* o = new QRadioButton(QString::number(i), Frame1);
        o->setGeometry(20 + (i - swDolar) * 70, 28, 60, 24);
        o->setAutoExclusive(false);
        Controles::Nombrar(o, QStringLiteral("Option1"), i, QString::number(i));
        grupo->addButton(o, i);
        Option1.insert(i, o);
    }
    // Exclusive by hand: choosing one puts the other off.
    connect(grupo, &QButtonGroup::idClicked, this, [this](int id) {
        Option1[id]->setChecked(true);
        Option1[id == swDolar ? swUsdt : swDolar]->setChecked(false);
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
    for (int i : {txtServicio, txtPorcentaje, txtDecimales, txtLetra})
        Text1[i]->clear();
    Option1[swDolar]->setChecked(false);
    Option1[swUsdt]->setChecked(false);
    Catalogo::Carga_Grid();
}

void Form_SERVICIOS::Procesar_Click()
{
    auto falta = [](QLineEdit* campo, const char* texto) {
        MsgBox(QString::fromUtf8(texto), Mensajes::vbInformation);
        if (campo)
            campo->setFocus();
    };
    QLineEdit* const servicio = Text1[txtServicio];
    QLineEdit* const porcentaje = Text1[txtPorcentaje];
    QLineEdit* const decimales = Text1[txtDecimales];
    QLineEdit* const letra = Text1[txtLetra];
    if (servicio->text().isEmpty())
        return falta(servicio, "Indique la Descripcipón del Servicio");
    if (porcentaje->text().isEmpty())
        return falta(porcentaje, "Indique Porcentaje de descuento del Servicio");
    decimales->setText(decimales->text().trimmed());
    if (decimales->text().isEmpty())
        return falta(decimales, "Indique Numero de decimales del Servicio");
    porcentaje->setText(conComa(porcentaje->text()));
    if (!Option1[swDolar]->isChecked() && !Option1[swUsdt]->isChecked())
        return falta(nullptr, "Indique tipo de calculo del Servicio (Sw-calculo)");
    letra->setText(letra->text().trimmed().toUpper());
    if (letra->text().isEmpty())
        return falta(letra, "Indique Letra del Servicio");

    // A letter already held is warned about, once per holder, and the service
    // is stored all the same: the operator mends it in the grid.
    for (int i = 1; i <= m.N_Servicios; ++i) {
        if (letra->text() == m.Servicios_T(i)[5].trimmed()) {
            MsgBox(QStringLiteral("Error : la letra ya esta asignada al servicio = ") + QString::number(i));
            letra->setFocus();
        }
    }
    m.I = Option1[swUsdt]->isChecked() ? swUsdt : swDolar;
    Ingresa(QStringLiteral("TRU_IN_SERVICIOS_02"),
            {Valor(servicio->text()), Valor(porcentaje->text()), Valor(decimales->text()), m.I, Valor(letra->text())}, true);
}

QList<Valor> Form_SERVICIOS::Valores_Modificar(int fila)
{
    Celdas.Value(fila, colPorcentaje) = conComa(Celdas.Value(fila, colPorcentaje).texto());
    auto celda = [&](int col) { return Celdas.Value(fila, col).texto().trimmed(); };
    return {Valor(celda(colCodigo)), Valor(celda(colDescripcion)),     Valor(celda(colPorcentaje)), Valor(celda(colDecimales)),
            Valor(celda(colSwCal)),  Valor(celda(colLetra).toUpper()), Valor(celda(colStatus))};
}

void Form_SERVICIOS::MODIFICAR_Click()
{
    Reloj_De_Arena(true);
    Catalogo::MODIFICAR_Click();
    Reloj_De_Arena(false);
}
