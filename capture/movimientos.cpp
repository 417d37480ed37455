#include "movimientos.h"
#include "controles.h"
#include "fallo.h"
#include "formato.h"
#include "foto.h"
#include "listas.h"
#include "mdiform1.h"
#include "mensajes.h"
#include "module1.h"
#include "numeros.h"
#include "rejilla.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpressionValidator>

using namespace Numeros;
using Mensajes::MsgBox;

namespace {

// The labels of the fields, by Movimientos::Campo; the ones without a label
// show a name beside the field before them.
const char* const kEtiquetas[13] = {"Secuencia Transacción :",
                                    "Operadora",
                                    "Código Cliente",
                                    "Código Proveedor",
                                    "Monto Enviado ($)",
                                    "Monto Recibido ($)",
                                    "Monto Estimado (Bs.)",
                                    "Nombre de la operadora",
                                    "Nombre del cliente",
                                    nullptr,
                                    "Observación",
                                    "Servicio...........................",
                                    "Nombre del servicio"};

// Fields where only an amount or a code can be typed.
bool soloCifras(int indice)
{
    return indice == Movimientos::txtOperadora || indice == Movimientos::txtCliente || indice == Movimientos::txtEnviado ||
           indice == Movimientos::txtRecibido;
}

} // namespace

Movimientos::Movimientos(Module1& modulo, MDIForm1& p) : Pantalla(modulo, p, QStringLiteral("Movimientos"))
{
    setWindowTitle(QStringLiteral("Ingreso de transacciones"));

    auto etiqueta = [this](const QString& texto, int x, int y, int w) {
        auto* l = new QLabel(texto, this);
        l->setGeometry(x, y, w, 24);
        return l;
    };
    auto campo = [this](int indice, int x, int y, int w) {
        auto* t = new QLineEdit(this);
        t->setGeometry(x, y, w, 24);
        Controles::Nombrar(t, QStringLiteral("Text2"), indice, QString::fromUtf8(kEtiquetas[indice]));
        Controles::SeleccionarAlEnfocar(t);
        t->installEventFilter(this);
        // What cannot be typed into a code or an amount cannot be pasted either.
        if (soloCifras(indice))
            t->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9.,]*")), t));
        Controles::AlPulsarEnter(t, [this, indice] { Text2_Enter(indice); });
        Text2[indice] = t;
        return t;
    };

    // ---- the transaction, left
    etiqueta(QStringLiteral("Fecha Transacción ="), 10, 12, 160);
    Fecha1 = new QDateEdit(this);
    Fecha1->setGeometry(175, 12, 130, 24);
    Fecha1->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    Fecha1->setCalendarPopup(true);
    Controles::Nombrar(Fecha1, QStringLiteral("Fecha1"), QStringLiteral("Fecha Transacción ="));

    const int xc = 175;
    int y = 48;
    etiqueta(QString::fromUtf8(kEtiquetas[txtSecuencia]), 10, y, 160);
    campo(txtSecuencia, xc, y, 70)->setReadOnly(true);
    y += 34;
    etiqueta(QString::fromUtf8(kEtiquetas[txtOperadora]), 10, y, 160);
    campo(txtOperadora, xc, y, 40)->setMaxLength(5); // the operator, as its column holds it
    campo(txtNombreOperadora, xc + 50, y, 260)->setReadOnly(true);
    y += 34;
    etiqueta(QString::fromUtf8(kEtiquetas[txtCliente]), 10, y, 160);
    campo(txtCliente, xc, y, 70);
    campo(txtNombreCliente, xc + 80, y, 300)->setReadOnly(true);
    y += 34;
    etiqueta(QString::fromUtf8(kEtiquetas[txtLetra]), 10, y, 160);
    campo(txtLetra, xc, y, 40)->setMaxLength(1);
    campo(txtNombreServicio, xc + 50, y, 260)->setReadOnly(true);
    y += 34;
    etiqueta(QString::fromUtf8(kEtiquetas[txtEnviado]), 10, y, 160);
    campo(txtEnviado, xc, y, 120);
    y += 34;
    etiqueta(QString::fromUtf8(kEtiquetas[txtRecibido]), 10, y, 160);
    campo(txtRecibido, xc, y, 120);
    y += 34;
    etiqueta(QString::fromUtf8(kEtiquetas[txtEstimado]), 10, y, 160);
    campo(txtEstimado, xc, y, 120)->setReadOnly(true);
    y += 34;
    etiqueta(QString::fromUtf8(kEtiquetas[txtProveedor]), 10, y, 160);
    campo(txtProveedor, xc, y, 70);
    y += 34;
    etiqueta(QString::fromUtf8(kEtiquetas[txtObservacion]), 10, y, 160);
    campo(txtObservacion, xc, y, 380)->setMaxLength(500); // the note, as its column holds it
    for (int i : {txtEnviado, txtRecibido, txtEstimado})
        Text2[i]->setAlignment(Qt::AlignRight);
    QFont negrita = Text2[txtNombreServicio]->font();
    negrita.setBold(true);
    Text2[txtNombreServicio]->setFont(negrita);

    y += 40;
    etiqueta(QStringLiteral("Banco Zelle"), 10, y, 160);
    Combo2 = new QComboBox(this);
    Combo2->setGeometry(xc, y, 220, 26);
    Controles::Nombrar(Combo2, QStringLiteral("Combo2"), QStringLiteral("Banco Zelle"));
    // The type of operation of a new row is always 2; the box only shows it.
    Combo1 = new QComboBox(this);
    Combo1->setGeometry(xc + 230, y, 150, 26);
    Combo1->addItem(QStringLiteral("2 - Transferencia"));
    Combo1->setEnabled(false);
    Controles::Nombrar(Combo1, QStringLiteral("Combo1"), QStringLiteral("Tipo de operación"));

    y += 38;
    etiqueta(QStringLiteral("Servicios"), 10, y, 200);
    etiqueta(QStringLiteral("Servicios del cliente"), 290, y, 200);
    List1 = new QListWidget(this);
    List1->setGeometry(10, y + 24, 270, 150);
    Controles::Nombrar(List1, QStringLiteral("List1"), QStringLiteral("Servicios"));
    List2 = new QListWidget(this);
    List2->setGeometry(290, y + 24, 265, 150);
    List2->setFocusPolicy(Qt::NoFocus);
    QFont fija(QStringLiteral("DejaVu Sans Mono"));
    fija.setStyleHint(QFont::Monospace);
    List2->setFont(fija);
    Controles::Nombrar(List2, QStringLiteral("List2"), QStringLiteral("Servicios del cliente"));

    const int yb = y + 186;
    INCLUIR = Controles::Boton(this, QStringLiteral("INCLUIR"), QStringLiteral("Agregar Transacción"), 10, yb, 180);
    Ver_T = Controles::Boton(this, QStringLiteral("Ver_T"), QStringLiteral("Ver transacciones del dia"), 200, yb, 200);
    SALIR = Controles::Boton(this, QStringLiteral("SALIR"), QStringLiteral("Salir"), 410, yb, 145);

    // ---- look-ups, middle
    const int xm = 575;
    Text1_4 = new QLineEdit(this);
    Text1_4->setGeometry(xm, 12, 250, 26);
    Text1_4->setPlaceholderText(QStringLiteral("Nombre del cliente"));
    Text1_4->setMaxLength(40);
    Controles::Nombrar(Text1_4, QStringLiteral("Text1"), 4, QStringLiteral("Buscar o crear cliente"));
    Controles::AlPulsarEnter(Text1_4, [this] { Busca_Cliente(); });
    Busca = Controles::Boton(this, QStringLiteral("Busca"), QStringLiteral("Buscar"), xm + 258, 10, 95);
    Procesar = Controles::Boton(this, QStringLiteral("Procesar"), QStringLiteral("Crear Cliente"), xm, 44, 170);
    REFRESCA_C = Controles::Boton(this, QStringLiteral("REFRESCA_C"), QStringLiteral("Refrescar Clientes"), xm + 180, 44, 173);
    GRID1 = new Rejilla(QStringLiteral("GRID1"), this);
    GRID1->setGeometry(xm, 82, 353, 330);
    GRID2 = new Rejilla(QStringLiteral("GRID2"), this);
    GRID2->setGeometry(xm, 420, 353, 210);

    // ---- the photograph, right
    const int xf = 945;
    Imagen = new QLabel(this);
    Imagen->setGeometry(xf, 12, 300, 375);
    Imagen->setAlignment(Qt::AlignCenter);
    Imagen->setFrameShape(QFrame::Box);
    Controles::Nombrar(Imagen, QStringLiteral("Imagen"), QStringLiteral("Foto del cliente"));
    Check1 = new QCheckBox(QStringLiteral("Foto Grande"), this);
    Check1->setGeometry(xf, 395, 200, 24);
    Controles::Nombrar(Check1, QStringLiteral("Check1"), QStringLiteral("Foto Grande"));
    Frame3 = new QFrame(this);
    Frame3->setGeometry(10, 10, 555, 620);
    Frame3->setFrameShape(QFrame::Box);
    Frame3->setAutoFillBackground(true);
    Controles::Nombrar(Frame3, QStringLiteral("Frame3"), QStringLiteral("Foto grande del cliente"));
    Image1 = new QLabel(Frame3);
    Image1->setGeometry(4, 4, 547, 612);
    Image1->setAlignment(Qt::AlignCenter);
    Controles::Nombrar(Image1, QStringLiteral("Image1"), QStringLiteral("Foto grande del cliente"));
    Frame3->hide();

    // ---- the keyboard's road through a transaction
    const QList<QWidget*> camino {Fecha1,
                                  Text2[txtOperadora],
                                  Text2[txtCliente],
                                  Text2[txtLetra],
                                  Text2[txtEnviado],
                                  Text2[txtRecibido],
                                  Text2[txtProveedor],
                                  Text2[txtObservacion],
                                  INCLUIR,
                                  Combo2,
                                  List1};
    for (int i = 1; i < camino.size(); ++i)
        setTabOrder(camino[i - 1], camino[i]);

    connect(Fecha1, &QDateEdit::dateChanged, this, [this] { Prepara_Transaccion(); });
    connect(Text2[txtLetra], &QLineEdit::textChanged, this, [this] { Letra_Cambiada(); });
    // A service chosen with the arrow keys, the mouse or by the screen itself:
    // every change of the current row is a click.
    connect(List1, &QListWidget::currentRowChanged, this, [this] { List1_Click(); });
    connect(INCLUIR, &QPushButton::clicked, this, [this] { Incluir_Click(); });
    connect(SALIR, &QPushButton::clicked, this, [this] { Unload(); });
    connect(Ver_T, &QPushButton::clicked, this, [this] { principal.Mostrar(QStringLiteral("Form2")); });
    connect(REFRESCA_C, &QPushButton::clicked, this, [this] { Carga_Clientes(); });
    connect(Busca, &QPushButton::clicked, this, [this] { Busca_Cliente(); });
    connect(Procesar, &QPushButton::clicked, this, [this] { Crea_Cliente(); });
    connect(Check1, &QCheckBox::clicked, this, [this] {
        Frame3->setVisible(Check1->isChecked());
        Frame3->raise();
    });
}

void Movimientos::Form_Load() { Colocar(100, 1010, 19050, 10000); }

void Movimientos::Form_Activate()
{
    Frame3->hide();
    if (Cargado)
        return;
    Text1_4->clear();
    {
        const QSignalBlocker sinAviso(Fecha1);
        Fecha1->setDate(QDate::currentDate());
    }
    Prepara_Transaccion();
    Carga_Clientes();
    Carga_Proveedores();
    Carga_Zelle();

    List1->clear();
    for (int i = 1; i <= m.N_Servicios; ++i) {
        const auto& servicio = m.Servicios_T(i);
        if (servicio[1].isEmpty())
            continue;
        auto* item = new QListWidgetItem(QStringLiteral(" ") + servicio[5] + QStringLiteral(" - ") + servicio[2], List1);
        item->setData(Qt::UserRole, i);
    }
    if (List1->count() > 0)
        List1->setCurrentRow(0);
    Text2[txtLetra]->setText(QStringLiteral("T"));
    Text2[txtNombreServicio]->setText(QStringLiteral("TRUMIN"));
    Letra_OK = true;
    Cargado = 1;
}

void Movimientos::Prepara_Transaccion()
{
    Fecha_T = Module1::Fecha_AMD(Fecha1->date().toString(QStringLiteral("dd/MM/yyyy")));
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_Prepara"));
    m.Comando.Parameters(1) = Valor(Fecha_T);
    m.Ejecuta_Comando();
    const int16_t secuencia = CInt(m.Rs->Fields(QStringLiteral("secuenciA")).aDouble() + 1);
    m.Rs->NextRecordset();
    m.Cierra_Rs();

    for (int i = txtOperadora; i <= txtObservacion; ++i)
        if (Text2[i])
            Text2[i]->clear();
    for (int i = txtOperadora; i <= txtEstimado; ++i)
        Text2[i]->setCursorPosition(0);
    Text2[txtSecuencia]->setText(Format(double(secuencia), QStringLiteral("0000")));
    Text2[txtOperadora]->setText(QStringLiteral("1"));
    Text2[txtNombreOperadora]->setText(QStringLiteral("Ramil"));
    Text2[txtCliente]->setFocus();
}

int Movimientos::indiceDe(QObject* campo) const
{
    for (int i = 0; i < int(Text2.size()); ++i)
        if (Text2[i] == campo)
            return i;
    return -1;
}

bool Movimientos::eventFilter(QObject* objeto, QEvent* evento)
{
    // Codes and amounts take only digits, the two decimal marks, backspace and Enter.
    if (evento->type() == QEvent::KeyPress && soloCifras(indiceDe(objeto))) {
        auto* tecla = static_cast<QKeyEvent*>(evento);
        const QString texto = tecla->text();
        if (tecla->key() == Qt::Key_Backspace || tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter)
            return false;
        if (!texto.isEmpty() && texto.at(0).isPrint() && !QStringLiteral("0123456789.,").contains(texto))
            return true;
    }
    return Pantalla::eventFilter(objeto, evento);
}

void Movimientos::Text2_Enter(int indice)
{
    QLineEdit* const campo = Text2[indice];
    switch (indice) {
    case txtOperadora:
        if (campo->text() == QLatin1String("1"))
            Text2[txtNombreOperadora]->setText(QStringLiteral("Ramil "));
        else if (campo->text() == QLatin1String("2"))
            Text2[txtNombreOperadora]->setText(QStringLiteral("Noelina"));
        Text2[txtCliente]->setFocus();
        break;
    case txtCliente: {
        if (campo->text().trimmed().isEmpty()) {
            MsgBox(QStringLiteral("Indique Numero del Cliente"), Mensajes::vbCritical);
            campo->setFocus();
            return;
        }
        const int16_t cliente = CInt(CDbl(campo->text()));
        Text2[txtNombreCliente]->setText(m.Nombre_Cliente(cliente));
        campo->setText(Format(double(cliente), QStringLiteral("0000")));
        Cuenta_Servicios();
        Text2[txtLetra]->setFocus();
        break;
    }
    case txtLetra:
        Text2[txtEnviado]->setFocus();
        break;
    case txtEnviado: {
        if (campo->text().trimmed().isEmpty()) {
            MsgBox(QStringLiteral("Indique Monto Enviado"), Mensajes::vbCritical);
            campo->setFocus();
            return;
        }
        campo->setText(campo->text().replace(QLatin1Char('.'), QLatin1Char(',')));
        m.Monto_Conv = CDbl(campo->text());
        m.Convierte_Dolar(m.Monto_Conv, Cod_Servicio);
        Text2[txtRecibido]->setText(Format(m.Monto_Usd, QStringLiteral("##0.00")));
        // For this letter the received amount is cut to cents, never rounded up.
        if (Text2[txtLetra]->text() == QLatin1String("M")) {
            m.Monto_Usd = Int(m.Monto_Usd * 100) / 100;
            Text2[txtRecibido]->setText(Format(m.Monto_Usd, QStringLiteral("##0.00")));
        }
        Text2[txtObservacion]->setFocus();
        break;
    }
    case txtRecibido: {
        if (campo->text().trimmed().isEmpty()) {
            MsgBox(QStringLiteral("Indique Monto Recibido"), Mensajes::vbCritical);
            campo->setFocus();
            return;
        }
        campo->setText(campo->text().replace(QLatin1Char('.'), QLatin1Char(',')));
        const float estimado = CSng(CDbl(campo->text()) * m.Dolar_Actual);
        Text2[txtEstimado]->setText(Format(Fix(estimado), QStringLiteral("###,##0")));
        Text2[txtObservacion]->setFocus();
        break;
    }
    default:
        break;
    }
}

void Movimientos::Letra_Cambiada()
{
    QLineEdit* letra = Text2[txtLetra];
    const QString capital = letra->text().toUpper();
    if (capital != letra->text()) {
        const int cursor = letra->cursorPosition();
        letra->setText(capital); // runs this logic again with the capital letter
        letra->setCursorPosition(cursor);
        return;
    }
    Letra_OK = false;
    Text2[txtNombreServicio]->setText(QStringLiteral("LETRA NO ASIGNADA"));
    const QString buscada = capital.trimmed();
    for (int i = 0; i < List1->count(); ++i) {
        const QString item = List1->item(i)->text();
        if (item.mid(1, 1) == buscada) {
            Text2[txtNombreServicio]->setText(item.mid(5, 20));
            Cod_Servicio = CInt(List1->item(i)->data(Qt::UserRole).toDouble());
            m.K = i;
            List1->setCurrentRow(i);
            Letra_OK = true;
            break;
        }
    }
}

void Movimientos::List1_Click()
{
    QListWidgetItem* item = List1->currentItem();
    if (!item)
        return;
    for (int i = 0; i < List1->count(); ++i)
        List1->item(i)->setSelected(List1->item(i) == item);
    Text2[txtLetra]->setText(item->text().mid(1, 1));
    Text2[txtNombreServicio]->setText(item->text().mid(5, 20));
}

void Movimientos::Incluir_Click()
{
    auto falta = [this](int indice, const char* texto, int estilo) {
        MsgBox(QString::fromUtf8(texto), estilo);
        Text2[indice]->setFocus();
    };
    if (Text2[txtCliente]->text().isEmpty())
        return falta(txtCliente, "Indique Código de Cliente", Mensajes::vbInformation);
    if (Text2[txtEnviado]->text().isEmpty())
        return falta(txtEnviado, "Indique Monto Enviado", Mensajes::vbInformation);
    if (Text2[txtRecibido]->text().isEmpty())
        return falta(txtRecibido, "Indique Monto Recibido", Mensajes::vbInformation);
    if (!Letra_OK)
        return falta(txtLetra, "Letra del Servicio no esta asignada", Mensajes::vbCritical);

    // The server reads the decimal point; the screen holds the comma.
    const QString enviado = Text2[txtEnviado]->text().trimmed().replace(QLatin1Char(','), QLatin1Char('.'));
    const QString recibido = Text2[txtRecibido]->text().trimmed().replace(QLatin1Char(','), QLatin1Char('.'));
    Text2[txtProveedor]->setText(QStringLiteral("0"));

    // One positional row of 28 values; the payment columns start empty, and
    // the whole received amount counts as gain at 100 until a console
    // completes the row.
    m.SQL = QStringLiteral(" INSERT INTO MOVIMIENTOS VALUES ('") + Fecha_T + QStringLiteral("','") + Text2[txtSecuencia]->text() +
            QStringLiteral("','") + Text2[txtCliente]->text() + QStringLiteral("','") + enviado + QStringLiteral("','") +
            recibido + QStringLiteral("','") + Text2[txtProveedor]->text() + QStringLiteral("','0','','','0','") +
            Text2[txtOperadora]->text() + QStringLiteral("',2,'") + QString::number(Cod_Servicio) +
            QStringLiteral("',0,'',0,0,'',100,'") + Text2[txtObservacion]->text() + QStringLiteral("','") + recibido +
            QStringLiteral("','") + recibido + QStringLiteral("',0,'','',0,0,'") + Combo2->currentText().left(1) +
            QStringLiteral("')");
    if (m.SQL.length() > 5)
        m.Conexion.Execute(m.SQL);
    m.Cierra_Rs();

    Prepara_Transaccion();
    if (List1->count() > 0)
        List1->setCurrentRow(0);
    Combo2->setCurrentIndex(0);
    Text2[txtLetra]->setText(QStringLiteral("T"));
    Text2[txtNombreServicio]->setText(QStringLiteral("TRUMIN"));
    Letra_OK = true;
    List2->clear();
}

void Movimientos::Carga_Zelle()
{
    Combo2->clear();
    for (int i = 0; i <= 10; ++i)
        Combo2->addItem(Format(double(i), QStringLiteral("0")) + QStringLiteral(" - ") + m.Bancos_Zelle_T(i));
    Combo2->setCurrentIndex(0);
}

void Movimientos::Carga_Clientes()
{
    Listas::Prepara(GRID1, Celdas1, QStringLiteral("Cliente"), 3900);
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_CLIENTES"));
    m.Ejecuta_Comando();
    Listas::Llena(m, GRID1, Celdas1, QStringLiteral("C_CLIENTE"), QStringLiteral("D_cliente"));
}

void Movimientos::Carga_Proveedores()
{
    Listas::Prepara(GRID2, Celdas2, QStringLiteral("Proveedor"), 3900);
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_proveedor"));
    m.Ejecuta_Comando();
    Listas::Llena(m, GRID2, Celdas2, QStringLiteral("C_proveedor"), QStringLiteral("D_proveedor"));
}

void Movimientos::Busca_Cliente()
{
    Listas::Prepara(GRID1, Celdas1, QStringLiteral("Cliente"), 3900);
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_Busca_CLIENTES"));
    m.Comando.Parameters(1) = Valor(Text1_4->text().trimmed());
    m.Ejecuta_Comando();
    Listas::Llena(m, GRID1, Celdas1, QStringLiteral("C_CLIENTE"), QStringLiteral("D_cliente"));
    Text1_4->clear();
}

void Movimientos::Crea_Cliente()
{
    if (Text1_4->text().isEmpty()) {
        MsgBox(QStringLiteral(" Indique Nombre del Cliente "), Mensajes::vbInformation);
        Text1_4->clear();
        Text1_4->setFocus();
        return;
    }
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_IN_CLIENTES_01"));
    m.Comando.Parameters(1) = Valor(Text1_4->text());
    m.Ejecuta_Comando();
    m.Cod_Cliente = CInt(m.Rs->Fields(QStringLiteral("C_CLIENTE")).aDouble());
    m.Nom_Cliente = m.Rs->Fields(QStringLiteral("D_cliente")).aTexto();
    MsgBox(QStringLiteral("Cliente creado = ") + QString::number(m.Cod_Cliente) + QStringLiteral(" ") + m.Nom_Cliente);
    // The new client must be known at once by the code typed in the entry.
    Carga_Clientes();
    m.Carga_Tablas();
    Text1_4->clear();
    Text2[txtCliente]->setFocus();
}

void Movimientos::Cuenta_Servicios()
{
    List2->clear();
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_Cuenta_servicios"));
    m.Comando.Parameters(1) = Valor(Text2[txtCliente]->text());
    m.Ejecuta_Comando();
    while (!m.Rs->Eof()) {
        const QString servicio = m.Rs->Fields(QStringLiteral("Servicio")).aTexto().leftJustified(14, QLatin1Char(' '), true);
        List2->addItem(servicio + QStringLiteral(" ") + Format(m.Rs->Fields(QStringLiteral("cuantos")), QStringLiteral("###0")));
        m.Rs->MoveNext();
    }
    m.Rs->NextRecordset();
    Ruta = m.Rs->Fields(QStringLiteral("Ruta")).aTexto();
    m.Cierra_Rs();
    Ver_Foto();
}

void Movimientos::Ver_Foto()
{
    const QByteArray foto = Foto::Lee(m, Text2[txtCliente]->text(), Ruta == QLatin1String("9999"));
    Foto::Muestra(Imagen, foto);
    Foto::Muestra(Image1, foto);
}
