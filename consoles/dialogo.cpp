#include "dialogo.h"
#include "controles.h"
#include "formato.h"
#include "mensajes.h"
#include "module1.h"
#include "numeros.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>

using Mensajes::MsgBox;

namespace {
Dialogo::Ejecutor& ejecutor()
{
    static Dialogo::Ejecutor e;
    return e;
}
} // namespace

Dialogo::Dialogo(Module1& modulo, QWidget* padre) : QDialog(padre), m(modulo)
{
    setObjectName(QStringLiteral("Dialogo"));
    setWindowTitle(QStringLiteral("Sumarización y Proceso de Pago"));
    setModal(true);
    setFixedSize(470, 330);

    const char* const etiquetas[txtTransacciones + 1] = {"Monto a Pagar", "Proveedor", "Referencia", "Nombre del proveedor",
                                                         "Transacciones"};
    auto campo = [this, &etiquetas](int i, int x, int y, int w, bool soloLectura) {
        auto* t = new QLineEdit(this);
        t->setGeometry(x, y, w, 26);
        t->setReadOnly(soloLectura);
        if (soloLectura)
            t->setFocusPolicy(Qt::NoFocus);
        Controles::Nombrar(t, QStringLiteral("Text2"), i, QString::fromUtf8(etiquetas[i]));
        Text2[size_t(i)] = t;
        return t;
    };
    auto etiqueta = [this](const char* texto, int y) {
        auto* l = new QLabel(QString::fromUtf8(texto), this);
        l->setGeometry(12, y, 130, 26);
    };

    campo(txtTransacciones, 12, 10, 446, true)->setAlignment(Qt::AlignCenter);
    etiqueta("Monto a Pagar", 44);
    campo(txtMonto, 145, 44, 150, true)->setAlignment(Qt::AlignRight);
    etiqueta("Proveedor", 78);
    campo(txtCodProveedor, 145, 78, 70, false);
    // A provider is a code of digits: nothing else can reach the look-up.
    QLineEdit* proveedor = Text2[txtCodProveedor];
    proveedor->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]{0,4}")), proveedor));
    // The name comes from the code, and the operator may still correct it.
    campo(txtNombreProveedor, 222, 78, 236, false);
    etiqueta("Referencia", 112);
    campo(txtReferencia, 145, 112, 200, false)->setMaxLength(50); // as the transaction's reference holds it
    setTabOrder(Text2[txtCodProveedor], Text2[txtReferencia]);
    setTabOrder(Text2[txtReferencia], Text2[txtNombreProveedor]);

    auto marco = [this](const char* titulo, int x, const std::array<const char*, 3>& opciones,
                        std::array<QRadioButton*, 3>& botones, const QString& arreglo) {
        auto* g = new QGroupBox(QString::fromUtf8(titulo), this);
        g->setGeometry(x, 148, 218, 116);
        for (int i = 0; i < 3; ++i) {
            auto* b = new QRadioButton(QString::fromUtf8(opciones[size_t(i)]), g);
            b->setGeometry(12, 24 + i * 28, 200, 24);
            Controles::Nombrar(b, arreglo, i, QString::fromUtf8(opciones[size_t(i)]));
            botones[size_t(i)] = b;
        }
    };
    marco("Banco", 12, {"Venezuela", "Banesco", "Otros"}, Option2, QStringLiteral("Option2"));
    marco("Tipo de Operación", 240, {"Pago Movil", "Transferencia", "Transferencia Directa"}, Option3, QStringLiteral("Option3"));

    OKButton = new QPushButton(QStringLiteral("Procesar Pago"), this);
    OKButton->setGeometry(130, 282, 150, 34);
    Controles::Nombrar(OKButton, QStringLiteral("OKButton"), QStringLiteral("Procesar Pago"));
    OKButton->setDefault(true); // Enter in the reference confirms
    CancelButton = new QPushButton(QStringLiteral("Cancelar"), this);
    CancelButton->setGeometry(298, 282, 150, 34);
    Controles::Nombrar(CancelButton, QStringLiteral("CancelButton"), QStringLiteral("Cancelar"));
    CancelButton->setAutoDefault(false);

    Controles::AlPulsarEnter(Text2[txtCodProveedor], [this] { Text2_1_Enter(); });
    connect(OKButton, &QPushButton::clicked, this, [this] { OKButton_Click(); });
    connect(CancelButton, &QPushButton::clicked, this, [this] { CancelButton_Click(); });
}

void Dialogo::Form_Activate()
{
    Text2[txtTransacciones]->setText(QString::number(m.Sel_Cuenta) + QStringLiteral(" Transacciones"));
    Text2[txtMonto]->setText(Format(m.Sel_Total, QStringLiteral("###,##0.00")));
    Text2[txtCodProveedor]->clear();
    Text2[txtReferencia]->clear();
    Option2[bcoVenezuela]->setChecked(true);
    Option3[opTransferencia]->setChecked(true);
    m.Ref_Banco = QStringLiteral("0102");
    m.Ref_Nombre_Banco = QStringLiteral("Banco Venezuela");
    m.Ref_Aceptado = false;
    Text2[txtCodProveedor]->setFocus();
}

void Dialogo::Text2_1_Enter()
{
    const int16_t codigo = Numeros::CInt(Numeros::CDbl(Text2[txtCodProveedor]->text()));
    Text2[txtNombreProveedor]->setText(m.Nombre_Proveedor(codigo));
    Text2[txtReferencia]->setFocus();
}

void Dialogo::OKButton_Click()
{
    auto falta = [this](const char* texto) {
        MsgBox(QString::fromUtf8(texto), Mensajes::vbCritical);
        Text2[txtCodProveedor]->setFocus();
    };
    if (Text2[txtCodProveedor]->text().isEmpty())
        return falta("Error: Indique Código del Proveedor");
    if (Text2[txtReferencia]->text().isEmpty())
        return falta("Error: Indique Número de Referencia");

    m.Ref_Cod_Proveedor = Format(Text2[txtCodProveedor]->text(), QStringLiteral("0000"));
    m.Ref_Nombre_Proveedor = Text2[txtNombreProveedor]->text();
    m.Ref_Referencia = Text2[txtReferencia]->text();
    m.Ref_Opcion = Option3[opPagoMovil]->isChecked() ? 1 : Option3[opTransferencia]->isChecked() ? 2 : 3;
    if (Option2[bcoBanesco]->isChecked()) {
        m.Ref_Banco = QStringLiteral("0134");
        m.Ref_Nombre_Banco = QStringLiteral("Banesco");
    } else if (Option2[bcoOtros]->isChecked()) {
        m.Ref_Banco = QStringLiteral("1111");
        m.Ref_Nombre_Banco = QStringLiteral("Otros");
    }
    m.Ref_Aceptado = true;
    accept();
}

void Dialogo::CancelButton_Click() { reject(); }

void Dialogo::Mostrar(Module1& m, QWidget* padre)
{
    Dialogo d(m, padre);
    d.Form_Activate();
    if (ejecutor())
        ejecutor()(d);
    else
        d.exec();
}

void Dialogo::Reemplazar(Ejecutor e) { ejecutor() = std::move(e); }
