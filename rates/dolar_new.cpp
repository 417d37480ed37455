#include "dolar_new.h"
#include "controles.h"
#include "fallo.h"
#include "formato.h"
#include "mensajes.h"
#include "module1.h"
#include "numeros.h"

#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Numeros;

namespace {
// From the dollar of the day to each wallet's price, by DOLAR_NEW::Billetera.
const double kFactores[5] = {0, 0.91, 0.94, 0.96, 0.85};
const char* const kBilleteras[5] = {"", "TRUMIN", "ZELLE", "ZINLI", "AMAZON"};

QString conComa(QString texto) { return texto.replace(QLatin1Char('.'), QLatin1Char(',')); }
} // namespace

DOLAR_NEW::DOLAR_NEW(Module1& modulo, MDIForm1& p) : Pantalla(modulo, p, QStringLiteral("DOLAR_NEW"))
{
    setWindowTitle(QStringLiteral("Precio del Dolar por Servicio"));
    auto etiqueta = [this](int indice, const QString& texto, int x, int y, int w) {
        auto* l = new QLabel(texto, this);
        l->setGeometry(x, y, w, 22);
        Controles::Nombrar(l, QStringLiteral("Label1"), indice, texto);
        Label1.insert(indice, l);
    };
    auto campo = [this](const QString& arreglo, int indice, const QString& rotulo, int x, int y) {
        auto* t = new QLineEdit(this);
        t->setGeometry(x, y, 88, 24);
        t->setAlignment(Qt::AlignRight);
        Controles::Nombrar(t, arreglo, indice, rotulo);
        return t;
    };

    etiqueta(lblGuardado, QString(), 10, 8, 560);
    etiqueta(lblAhora, QString(), 10, 30, 560);
    etiqueta(lblDolar, QStringLiteral(" Dolar del día ="), 10, 70, 130);
    Text1 = new QLineEdit(this);
    Text1->setGeometry(145, 69, 110, 24);
    Text1->setAlignment(Qt::AlignRight);
    Controles::Nombrar(Text1, QStringLiteral("Text1"), QStringLiteral(" Dolar del día ="));
    Controles::SeleccionarAlEnfocar(Text1);
    Controles::AlPulsarEnter(Text1, [this] { Text1_Enter(); });

    // The heads are one text spaced by blanks; each column of prices stands
    // centred under its word, wherever the face of this machine puts it.
    etiqueta(lblCabezas, QStringLiteral("  TRUMIN             ZELLE                  ZINLI                AMAZON"), 145, 110,
             520);
    const QFontMetrics medida(Label1[lblCabezas]->font());
    const QString cabeza = Label1[lblCabezas]->text();
    for (int i = bTrumin; i <= bAmazon; ++i) {
        const QString billetera = QString::fromLatin1(kBilleteras[i]);
        const int centro = 145 + medida.horizontalAdvance(cabeza.left(cabeza.indexOf(billetera))) +
                           medida.horizontalAdvance(billetera) / 2;
        const int x = qMax(145 + (i - bTrumin) * 92, centro - 44);
        QLineEdit* guardado = campo(QStringLiteral("Text2"), i - 1, billetera, x, 134);
        guardado->setReadOnly(true);
        guardado->setFocusPolicy(Qt::NoFocus);
        Text2.insert(i - 1, guardado);
        QLineEdit* nuevo = campo(QStringLiteral("Text3"), i, billetera, x, 168);
        Controles::SeleccionarAlEnfocar(nuevo);
        Text3.insert(i, nuevo);
    }
    // Captions of the two rows of prices.
    (new QLabel(QStringLiteral("Guardado"), this))->setGeometry(10, 135, 120, 22);
    (new QLabel(QStringLiteral("Nuevo"), this))->setGeometry(10, 169, 120, 22);

    Actualizar = new QPushButton(QStringLiteral("Actualizar"), this);
    Actualizar->setGeometry(145, 215, 150, 30);
    SALIR = new QPushButton(QStringLiteral("Salir"), this);
    SALIR->setGeometry(520, 215, 150, 30);
    Controles::Nombrar(Actualizar, QStringLiteral("Actualizar"), QStringLiteral("Actualizar"));
    Controles::Nombrar(SALIR, QStringLiteral("SALIR"), QStringLiteral("Salir"));
    connect(Actualizar, &QPushButton::clicked, this, [this] { Actualizar_Click(); });
    connect(SALIR, &QPushButton::clicked, this, [this] { Unload(); });
}

void DOLAR_NEW::Form_Load() { Colocar(2000, 3001, 12550, 5000); }

void DOLAR_NEW::Form_Activate()
{
    Label1[lblAhora]->setText(QStringLiteral("Precio de Dolar al ") + m.reloj().toString(QStringLiteral("dd/MM/yyyy HH:mm:ss")));
    m.Cierra_Rs();
    m.SQL = QStringLiteral(" select * from dolar_NEW");
    m.Abre_Rs(m.SQL);
    Label1[lblGuardado]->setText(QStringLiteral("Precio de Dolar al ") + m.Rs->Fields(QStringLiteral("Fecha")).aTexto());
    for (int i = bTrumin; i <= bAmazon; ++i)
        Text2[i - 1]->setText(Format(m.Rs->Fields(QString::fromLatin1(kBilleteras[i])), QStringLiteral("###.00")));
    Text1->clear();
    Text1->setFocus();
    m.Cierra_Rs();
}

void DOLAR_NEW::Text1_Enter()
{
    Text1->setText(conComa(Text1->text()));
    if (Text1->text().isEmpty()) {
        Mensajes::MsgBox(QStringLiteral("Indique Dolar del día"));
        Text1->setFocus();
        return;
    }
    const double dolar = CDbl(Text1->text());
    for (int i = bTrumin; i <= bAmazon; ++i)
        Text3[i]->setText(Format(dolar * kFactores[i], QStringLiteral("###.00")));
    Text1->selectAll();
}

void DOLAR_NEW::Actualizar_Click()
{
    for (int i = bTrumin; i <= bAmazon; ++i)
        Text3[i]->setText(Format(conComa(Text3[i]->text()), QStringLiteral("##0.00")));
    const QDateTime ahora = m.reloj();
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_UPDATE_DOLAR_01"));
    m.Comando.Parameters(1) = Valor(ahora);
    for (int i = bTrumin; i <= bAmazon; ++i)
        m.Comando.Parameters(i + 1) = Valor(Text3[i]->text());
    m.Ejecuta_Comando();
    m.Cierra_Rs();
    m.Rec_Fecha = ahora.toString(QStringLiteral("dd/MM/yyyy HH:mm:ss"));
    // The cached amounts of the four wallets change at once, without a reload.
    for (int i = bTrumin; i <= bAmazon; ++i) {
        if (Text3[i]->text().trimmed().isEmpty())
            throw FalloEjecucion::tiposNoCoinciden(); // an empty price is no number
        m.Monto_T(i) = CSng(CDbl(Text3[i]->text()));
    }
    Form_Activate();
}
