#include "dolar.h"
#include "controles.h"
#include "module1.h"
#include "mensajes.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

Dolar::Dolar(Module1& modulo, MDIForm1& p) : Pantalla(modulo, p, QStringLiteral("Dolar"))
{
    setWindowTitle(QStringLiteral("Precio del Dolar"));
    for (int i : {lnGuardado, lnNuevo}) {
        auto* l = new QLabel(this);
        l->setGeometry(10, 10 + i * 50, 280, 22);
        Controles::Nombrar(l, QStringLiteral("Label1"), i, QStringLiteral("Precio de Dolar al "));
        Label1.insert(i, l);
        auto* t = new QLineEdit(this);
        t->setGeometry(300, 9 + i * 50, 110, 24);
        t->setAlignment(Qt::AlignRight);
        Controles::Nombrar(t, QStringLiteral("Text2"), i,
                           i == lnGuardado ? QStringLiteral("Precio guardado") : QStringLiteral("Precio nuevo"));
        Text2.insert(i, t);
    }
    Text2[lnGuardado]->setReadOnly(true);
    Text2[lnGuardado]->setFocusPolicy(Qt::NoFocus);
    Controles::SeleccionarAlEnfocar(Text2[lnNuevo]);
    Actualizar = new QPushButton(QStringLiteral("Actualizar"), this);
    Actualizar->setGeometry(300, 105, 110, 30);
    Controles::Nombrar(Actualizar, QStringLiteral("Actualizar"), QStringLiteral("Actualizar"));
    // Enter in the new price moves on to the button.
    Controles::AlPulsarEnter(Text2[lnNuevo], [this] { Actualizar->setFocus(); });
    connect(Actualizar, &QPushButton::clicked, this, [this] { Actualizar_Click(); });
}

void Dolar::Form_Load() { Colocar(3000, 5001, 6550, 2700); }

void Dolar::Form_Activate()
{
    Label1[lnNuevo]->setText(QStringLiteral("Precio de Dolar al ") + m.reloj().toString(QStringLiteral("dd/MM/yyyy HH:mm:ss")));
    m.Cierra_Rs();
    m.SQL = QStringLiteral(" select * from dolar");
    m.Abre_Rs(m.SQL);
    Label1[lnGuardado]->setText(QStringLiteral("Precio de Dolar al ") + m.Rs->Fields(QStringLiteral("Fecha")).aTexto());
    Text2[lnGuardado]->setText(m.Rs->Fields(QStringLiteral("valor")).aTexto());
    m.Cierra_Rs();
}

void Dolar::Actualizar_Click()
{
    // An empty price would be stored as 0 and price every estimate at 0.
    if (Text2[lnNuevo]->text().trimmed().isEmpty()) {
        Mensajes::MsgBox(QStringLiteral("Indique Dolar del día"));
        Text2[lnNuevo]->setFocus();
        return;
    }
    // This procedure takes the decimal point, unlike the other rate procedures.
    const QString valor = Text2[lnNuevo]->text().replace(QLatin1Char(','), QLatin1Char('.'));
    const QDateTime ahora = m.reloj();
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_UPDATE_DOLAR"));
    m.Comando.Parameters(1) = Valor(ahora);
    m.Comando.Parameters(2) = Valor(valor);
    m.Ejecuta_Comando();
    m.Cierra_Rs();
    m.Rec_Fecha = ahora.toString(QStringLiteral("dd/MM/yyyy HH:mm:ss"));
    m.Dolar_Actual = Module1::Dolar_De_Envio(valor);
    Unload();
}
