#include "new_dolar.h"
#include "controles.h"
#include "fallo.h"
#include "formato.h"
#include "login.h"
#include "mensajes.h"
#include "module1.h"
#include "numeros.h"
#include "rejilla.h"

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

using namespace Numeros;
using Mensajes::MsgBox;

namespace {

QString conComa(QString texto) { return texto.replace(QLatin1Char('.'), QLatin1Char(',')); }

// The cut of a rate to the decimals of its service. The text in "##0.00000"
// is cut by counting characters, not rounded, which supposes three digits
// before the decimal mark: 123,45678 at 2 decimals gives 123,4500, but
// 12,34567 gives 12,34500. That is how the business's rates have always been
// cut, and it stays.
QString Corta_Decimales(const QString& texto, const Celda& decimales)
{
    if (decimales == 2)
        return texto.left(6) + QStringLiteral("00");
    if (decimales == 3)
        return texto.left(7) + QStringLiteral("0");
    if (decimales == 4)
        return texto.left(8) + QStringLiteral("0");
    return texto;
}

// A figure rounded to four decimals and read back, as each step of the USDT
// pricing takes the previous one.
double Cuatro_Decimales(double valor) { return CDbl(Format(valor, QStringLiteral("##0.0000"))); }

double Divide(double a, double b)
{
    if (b == 0)
        throw FalloEjecucion::divisionPorCero();
    return a / b;
}

} // namespace

NEW_DOLAR::NEW_DOLAR(Module1& modulo, MDIForm1& p) : Pantalla(modulo, p, QStringLiteral("NEW_DOLAR"))
{
    setWindowTitle(QStringLiteral("PRECIO DEL DOLAR"));

    auto etiqueta = [this](QMap<int, QLabel*>& arreglo, const QString& nombre, int indice, const QString& texto, int x,
                           int y, int w) {
        auto* l = new QLabel(texto, this);
        l->setGeometry(x, y, w, 22);
        Controles::Nombrar(l, nombre, indice, texto);
        arreglo.insert(indice, l);
        return l;
    };
    auto campo = [this](const QString& nombre, const QString& rotulo, int x, int y, int w) {
        auto* t = new QLineEdit(this);
        t->setGeometry(x, y, w, 24);
        Controles::Nombrar(t, nombre, rotulo);
        Controles::SeleccionarAlEnfocar(t);
        return t;
    };
    auto rejilla = [this](QWidget* padre, const QString& nombre, int x, int y, int w, int h) {
        auto* g = new Rejilla(nombre, padre);
        g->setGeometry(x, y, w, h);
        return g;
    };

    // ---- the dollar and the moments
    etiqueta(Label1, QStringLiteral("Label1"), 3, QStringLiteral("Ultimo Dolar del día ="), 10, 10, 170);
    Text1 = campo(QStringLiteral("Text1"), QStringLiteral("Ultimo Dolar del día ="), 185, 9, 110);
    Text1->setAlignment(Qt::AlignRight);
    etiqueta(Label1, QStringLiteral("Label1"), 0, QString(), 320, 6, 560);
    etiqueta(Label1, QStringLiteral("Label1"), 1, QString(), 320, 28, 560);

    // ---- the two tables side by side
    GRID = rejilla(this, QStringLiteral("GRID"), 10, 60, 600, 420);
    GRID1 = rejilla(this, QStringLiteral("GRID1"), 625, 60, 530, 420);

    CALCULOS = Controles::Boton(this, QStringLiteral("CALCULOS"), QStringLiteral("Calcular Valores"), 10, 490, 190);
    Procesar = Controles::Boton(this, QStringLiteral("Procesar"), QStringLiteral("Actualizar Valores"), 210, 490, 190);
    INCLUIR = Controles::Boton(this, QStringLiteral("INCLUIR"), QStringLiteral("Incluir Concepto"), 410, 490, 190);
    ACTUALIZAR = Controles::Boton(this, QStringLiteral("ACTUALIZAR"), QStringLiteral("Actualizar Montos"), 410, 530, 190);

    MODIFICAR_USDT = Controles::Boton(this, QStringLiteral("MODIFICAR_USDT"), QStringLiteral("Modificar Tabla USDT"), 625, 490, 220);
    etiqueta(uev, QStringLiteral("uev"), 2, QStringLiteral("Nuevo Servicio USDT"), 625, 528, 250);
    Text2 = campo(QStringLiteral("Text2"), QStringLiteral("Nuevo Servicio USDT"), 625, 550, 250);
    Text2->setMaxLength(60);
    etiqueta(uev, QStringLiteral("uev"), 0, QStringLiteral("Equivalencia"), 885, 528, 90);
    Text3 = campo(QStringLiteral("Text3"), QStringLiteral("Equivalencia"), 885, 550, 80);
    INGRESO = Controles::Boton(this, QStringLiteral("INGRESO"), QStringLiteral("Procesar Ingreso"), 975, 547, 180);

    Notifica = Controles::Boton(this, QStringLiteral("Notifica"), QStringLiteral("Ver Notificaciones"), 1170, 60, 150);
    SALIR = Controles::Boton(this, QStringLiteral("SALIR"), QStringLiteral("Salir"), 1170, 547, 150);

    // ---- the notifications, over the grids
    Frame1 = new QFrame(this);
    Frame1->setGeometry(10, 60, 1150, 420);
    Frame1->setFrameShape(QFrame::Box);
    Frame1->setAutoFillBackground(true);
    Controles::Nombrar(Frame1, QStringLiteral("Frame1"), QStringLiteral("Notificaciones"));
    CIERRA_NOTI = Controles::Boton(Frame1, QStringLiteral("CIERRA_NOTI"), QStringLiteral("X"), 1110, 4, 34, 26);
    GRID2 = rejilla(Frame1, QStringLiteral("GRID2"), 6, 34, 1138, 380);
    QFont fija(QStringLiteral("Courier New"));
    fija.setStyleHint(QFont::Monospace);
    fija.setPointSizeF(GRID2->FontSize());
    GRID2->setFont(fija);
    GRID2->vista()->setFont(fija);
    Frame1->hide();

    connect(GRID1, &Rejilla::AfterColEdit, this, [this] {
        // Any edit marks the row, even one typed back to its old value.
        Celdas1.Value(GRID1->Bookmark(), 4) = -1;
        GRID1->Update();
    });
    connect(CALCULOS, &QPushButton::clicked, this, [this] { Calcula_Valores(); });
    connect(Procesar, &QPushButton::clicked, this, [this] { Actualiza_Valores(); });
    connect(MODIFICAR_USDT, &QPushButton::clicked, this, [this] { Modifica_USDT(); });
    connect(INGRESO, &QPushButton::clicked, this, [this] { INGRESO_Click(); });
    connect(Notifica, &QPushButton::clicked, this, [this] { Notifica_Click(); });
    connect(CIERRA_NOTI, &QPushButton::clicked, this, [this] { CIERRA_NOTI_Click(); });
    connect(SALIR, &QPushButton::clicked, this, [this] { Unload(); });
}

void NEW_DOLAR::Form_Load() { Colocar(100, 500, 20050, 9500); }

void NEW_DOLAR::Rotula_Fechas()
{
    Label1[0]->setText(QStringLiteral("Ultima actualización de los valores = ") + m.Fecha_Param);
    Label1[1]->setText(QStringLiteral("Actualización de los Valores al : ") +
                       m.reloj().toString(QStringLiteral("dd/MM/yyyy HH:mm:ss")));
}

void NEW_DOLAR::Form_Activate()
{
    m.I = 0;
    Text1->setText(StrSng(m.Dolar_Param));
    Rotula_Fechas();
    Carga_Dolares();
    Carga_USDT();
}

// ---------------------------------------------------------------- service rates

void NEW_DOLAR::Prepara_Grid()
{
    const auto d = Alineacion::Derecha, c = Alineacion::Centro, g = Alineacion::General;
    struct {
        const char* titulo;
        int ancho;
        Alineacion alineacion;
    } const columnas[] = {{"Código", 1000, c},     {"Servicio", 2000, g},    {"Monto\rAnterior", 1300, d},
                          {"Porcentaje", 1300, d}, {"Monto\rActual", 1300, d}, {"Deci.", 800, c},
                          {"Sw-C", 800, c}};
    for (int n = 0; n < 7; ++n)
        GRID->Columns(n)
            .setWidth(columnas[n].ancho)
            .setCaption(QString::fromUtf8(columnas[n].titulo))
            .setAlignment(columnas[n].alineacion)
            .setHeadAlignment(c)
            .setAllowFocus(n == 4);
    GRID->setRowHeight(300);
    Celdas.ReDim(-1, -1, 0, 0);
    GRID->Array(Celdas);
    GRID->ReBind();
}

void NEW_DOLAR::Carga_Dolares()
{
    m.Precios_T.llenar(0);
    Prepara_Grid();
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_dolares"));
    m.Ejecuta_Comando();
    int i = -1;
    while (!m.Rs->Eof()) {
        ++i;
        Celdas.ReDim(0, i, 0, 6);
        const int codigo = CInt(m.Rs->Fields(QStringLiteral("C_SERVIcio")).aDouble());
        Celdas(i, 0) = Format(m.Rs->Fields(QStringLiteral("C_SERVIcio")), QStringLiteral("00"));
        Celdas(i, 1) = Format(m.Rs->Fields(QStringLiteral("D_SERVIcio")), QStringLiteral("&"));
        Celdas(i, 2) = Format(m.Rs->Fields(QStringLiteral("MONTO")), QStringLiteral("##0.0000"));
        Celdas(i, 3) = Format(m.Rs->Fields(QStringLiteral("porcentaje")), QStringLiteral("###.00"));
        Celdas(i, 5) = m.Servicios_T(codigo)[4];
        Celdas(i, 6) = Format(m.Rs->Fields(QStringLiteral("sw_calculos")), QStringLiteral("&"));
        m.Precios_T(codigo) = CSng(100 - m.Rs->Fields(QStringLiteral("porcentaje")).aDouble());
        m.Rs->MoveNext();
    }
    m.Cierra_Rs();
    GRID->Array(Celdas);
    GRID->ReBind();
}

void NEW_DOLAR::Calcula_Valores()
{
    GRID1->Update();
    // The prices are read with the decimal comma: a typed point works as one.
    for (int i : Celdas1.Filas())
        for (int col : {2, 3})
            Celdas1(i, col) = conComa(Celdas1(i, col).texto());
    GRID1->Array(Celdas1);
    GRID1->ReBind();
    // The buy price of the first USDT row is the reference dollar.
    Dolar_Usdt = CSng(CDbl(Format(Celdas1(0, 2), QStringLiteral("###.00"))));
    Text1->setText(Format(double(Dolar_Usdt), QStringLiteral("###.00")));
    Calcula_Montos();
}

void NEW_DOLAR::Calcula_Montos()
{
    // The base USDT price (second row) stands for the whole pass.
    const double Base = Celdas1(1, 2).numero();

    // Services priced from the dollar, less their percentage, cut to their decimals.
    for (int i : Celdas.Filas()) {
        if (!(Celdas(i, 6) == 1))
            continue;
        const double Factor = (100 - Celdas(i, 3).numero()) / 100;
        const QString valor = Format(CDbl(Text1->text()) * Factor, QStringLiteral("##0.00000"));
        Celdas(i, 4) = Corta_Decimales(valor, Celdas(i, 5));
    }

    // Services tied to a USDT row (equivalence above 49): the base against
    // the row's price, less the service's percentage, each step at four
    // decimals. A later row with the same equivalence wins.
    for (int i : Celdas1.Filas()) {
        if (!(Celdas1(i, 5).numero() > 49))
            continue;
        const int K = CInt(Celdas1(i, 5).numero());
        const double compra = Celdas1(i, 2).numero();
        double Valor = 0;
        if (compra > 0 && Celdas1(i, 6) == 1)
            Valor = Cuatro_Decimales(Divide(Base, compra));
        if (compra > 0 && Celdas1(i, 6) == 2)
            Valor = Cuatro_Decimales(Divide(compra, Base));
        // The percentage travels in single precision.
        Valor = Cuatro_Decimales(double(m.Precios_T(K) / 100.0f) * Valor);
        for (int j : Celdas.Filas())
            if (Celdas(j, 0) == K)
                Celdas(j, 4) = Valor;
    }
    GRID->Array(Celdas);
    GRID->ReBind();
    GRID1->Array(Celdas1);
    GRID1->ReBind();
}

void NEW_DOLAR::Actualiza_Valores()
{
    Reloj_De_Arena(true);
    struct Fin {
        ~Fin() { Reloj_De_Arena(false); }
    } fin;
    GRID->Update();
    GRID->Array(Celdas);
    GRID->ReBind();
    // The second row's amount tells that the calculation was run.
    if (Celdas(1, 4).texto().trimmed().isEmpty())
        return;
    // An empty dollar would be stored as 0, the day's dollar of the consoles.
    if (Text1->text().trimmed().isEmpty()) {
        Mensajes::MsgBox(QStringLiteral("Indique Dolar del día"));
        Text1->setFocus();
        return;
    }
    for (int i : Celdas.Filas()) {
        // The server reads the decimal comma; a typed point becomes one.
        Celdas(i, 4) = conComa(Celdas(i, 4).texto());
        m.Cierra_Rs();
        m.Prepara_Comando(QStringLiteral("TRU_UPDATE_DOLAR_02"));
        m.Comando.Parameters(1) = Valor(Celdas(i, 0).texto().trimmed());
        m.Comando.Parameters(2) = Valor(Celdas(i, 4).texto().trimmed());
        m.Ejecuta_Comando();
    }
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_UPDATE_DOLAR_03"));
    m.Comando.Parameters(1) = Valor(Text1->text().trimmed());
    m.Rs = m.Comando.Execute(4);
    m.Cierra_Rs();

    m.Fecha_Param = m.reloj().toString(QStringLiteral("dd/MM/yyyy HH:mm:ss"));
    Rotula_Fechas();
    Carga_Dolares();
    // The whole client takes the new rates and the dollar.
    LOGIN::Carga_Parametros(m);
    GRID->Array(Celdas);
    GRID->ReBind();
    Text1->setFocus();
}

// ---------------------------------------------------------------- USDT prices

void NEW_DOLAR::Prepara_Grid1()
{
    const auto d = Alineacion::Derecha, c = Alineacion::Centro, g = Alineacion::General;
    // Column 3, the sell price, travels with the row out of the operator's
    // sight (one twip wide); column 4 is the hidden change mark.
    GRID1->Columns(0).setWidth(1000).setCaption(QStringLiteral("Codigo")).setAlignment(c).setAllowFocus(false);
    GRID1->Columns(1).setWidth(2600).setCaption(QStringLiteral("Descripcion")).setAlignment(g);
    GRID1->Columns(2).setWidth(1600).setCaption(QStringLiteral("Precio\rCompra")).setAlignment(d);
    GRID1->Columns(3).setWidth(1).setCaption(QStringLiteral("Precio\rVenta")).setAlignment(d);
    GRID1->Columns(4).setWidth(200).setCaption(QString()).setVisible(false).setAllowFocus(false);
    GRID1->Columns(5).setWidth(1000).setCaption(QStringLiteral("Equiv.")).setAlignment(c).setAllowFocus(false);
    GRID1->Columns(6).setWidth(1000).setCaption(QStringLiteral("Divide")).setAlignment(c);
    for (int n = 0; n < 7; ++n)
        GRID1->Columns(n).setHeadAlignment(c);
    GRID1->setRowHeight(300);
    Celdas1.ReDim(-1, -1, 0, 0);
    GRID1->Array(Celdas1);
    GRID1->ReBind();
}

void NEW_DOLAR::Carga_USDT()
{
    Text2->clear();
    Text3->clear();
    Prepara_Grid1();
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_servicios_USDT"));
    m.Ejecuta_Comando();
    int i = -1;
    while (!m.Rs->Eof()) {
        ++i;
        Celdas1.ReDim(0, i, 0, 6);
        Celdas1(i, 0) = Format(m.Rs->Fields(QStringLiteral("C_SERVIcio")), QStringLiteral("00"));
        Celdas1(i, 1) = Format(m.Rs->Fields(QStringLiteral("D_SERVIcio")), QStringLiteral("&"));
        Celdas1(i, 2) = Format(m.Rs->Fields(QStringLiteral("compra")), QStringLiteral("#0.0000"));
        Celdas1(i, 3) = Format(m.Rs->Fields(QStringLiteral("venta")), QStringLiteral("0.0000"));
        Celdas1(i, 4) = QStringLiteral("0");
        Celdas1(i, 5) = Format(m.Rs->Fields(QStringLiteral("equivalencia")), QStringLiteral("0"));
        Celdas1(i, 6) = Format(m.Rs->Fields(QStringLiteral("div")), QStringLiteral("0"));
        m.Rs->MoveNext();
    }
    m.Cierra_Rs();
    GRID1->Array(Celdas1);
    GRID1->ReBind();
}

void NEW_DOLAR::Modifica_USDT()
{
    GRID1->Update();
    GRID1->Array(Celdas1);
    GRID1->ReBind();
    for (int i : Celdas1.Filas()) {
        if (!(Celdas1(i, 4) == -1))
            continue;
        m.Cierra_Rs();
        for (int col : {2, 3})
            Celdas1(i, col) = conComa(Celdas1(i, col).texto());
        // The two reference rows price no service.
        if (Celdas1(i, 0).numero() < 3)
            Celdas1(i, 6) = 0;
        m.Prepara_Comando(QStringLiteral("TRU_MOD_servicios_USDT"));
        for (int n : {0, 1, 2, 3, 6})
            m.Comando.Parameters(n == 6 ? 5 : n + 1) = Valor(Celdas1(i, n).texto().trimmed());
        m.Ejecuta_Comando();
    }
    m.Cierra_Rs();
    m.Fecha_Compraventas = m.reloj().toString(QStringLiteral("dd/MM/yyyy HH:mm:ss"));
    Carga_USDT();
}

double NEW_DOLAR::Equivalencia_Pedida() const
{
    // The whole part of the code as typed, with either decimal mark: 55.9 is 55.
    return Int(CDbl(conComa(Text3->text())));
}

void NEW_DOLAR::Rechaza_Equivalencia(const QString& texto)
{
    MsgBox(texto, Mensajes::vbCritical);
    Text3->clear();
    Text3->setFocus();
    m.K = 1;
}

void NEW_DOLAR::Valida_Equivalencia_Libre()
{
    m.K = 0;
    const double pedida = Equivalencia_Pedida();
    for (int i : Celdas1.Filas()) {
        if (Int(Celdas1(i, 5).numero()) == pedida) {
            Rechaza_Equivalencia(QStringLiteral(" ERROR : Código de equivalencia ya esta asignado"));
            return;
        }
    }
}

void NEW_DOLAR::Valida_Equivalencia_Existe()
{
    m.K = 0;
    const double pedida = Equivalencia_Pedida();
    int J = 0;
    bool directo = false;
    for (int i : Celdas.Filas()) {
        if (Int(Celdas(i, 0).numero()) != pedida)
            continue;
        ++J;
        directo = directo || Celdas(i, 6) == 1;
    }
    if (J == 0)
        Rechaza_Equivalencia(QStringLiteral(" ERROR : Codigo de servicio equivalente no existe"));
    else if (directo)
        Rechaza_Equivalencia(QStringLiteral(" ERROR : No se puede asignar equivalencia a ese servicio, SW-C=1"));
}

void NEW_DOLAR::INGRESO_Click()
{
    if (Text2->text().isEmpty()) {
        MsgBox(QStringLiteral("Indique la Descripcipón del Servicio"), Mensajes::vbInformation);
        Text2->setFocus();
        return;
    }
    if (Text3->text().isEmpty()) {
        MsgBox(QStringLiteral("Indique codigo de equivalencia"), Mensajes::vbInformation);
        Text3->setFocus();
        return;
    }
    Valida_Equivalencia_Libre();
    if (!(m.K == 1))
        Valida_Equivalencia_Existe();
    if (m.K == 1)
        return;
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_IN_SERVICIOS_USDT"));
    m.Comando.Parameters(1) = Valor(Text2->text().toUpper());
    m.Comando.Parameters(2) = Valor(Equivalencia_Pedida());
    m.Ejecuta_Comando();
    Carga_USDT();
}

// ---------------------------------------------------------------- notifications

void NEW_DOLAR::Prepara_Grid2()
{
    const auto c = Alineacion::Centro, g = Alineacion::General;
    struct {
        const char* titulo;
        int ancho;
        Alineacion alineacion;
        bool foco;
    } const columnas[] = {{"C-P", 600, c, false},     {"Nombre Proveedor", 2500, g, true},
                          {"Titulo", 2500, g, true},  {"Mensaje", 2500, g, true},
                          {"Fecha Actualizacion", 3200, c, false}, {"Tipo", 2000, g, false},
                          {"Leida", 700, c, true}};
    for (int n = 0; n < 7; ++n)
        GRID2->Columns(n)
            .setWidth(columnas[n].ancho)
            .setCaption(QString::fromUtf8(columnas[n].titulo))
            .setAlignment(columnas[n].alineacion)
            .setHeadAlignment(c)
            .setAllowFocus(columnas[n].foco)
            .setLocked(true);
    GRID2->Columns(7).setVisible(false).setAllowFocus(false);
    GRID2->setAllowUpdate(false); // read only: nothing is stored from here
    Celdas2.ReDim(-1, -1, 0, 7);
    GRID2->Array(Celdas2);
    GRID2->ReBind();
}

void NEW_DOLAR::Notifica_Click()
{
    Frame1->show();
    Frame1->raise();
    Prepara_Grid2();
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("Ramil_lista_Notificaciones"));
    m.Ejecuta_Comando();
    int i = -1;
    while (!m.Rs->Eof()) {
        ++i;
        Celdas2.ReDim(0, i, 0, 6);
        Celdas2(i, 0) = Format(m.Rs->Fields(QStringLiteral("Codigo_proveedor")), QStringLiteral("00"));
        int col = 1;
        for (const char* campo : {"Nombre", "titulo", "mensaje", "Fecha", "tipo", "leida"})
            Celdas2(i, col++) = Format(m.Rs->Fields(QString::fromLatin1(campo)), QStringLiteral("&"));
        m.Rs->MoveNext();
    }
    m.Cierra_Rs();
    GRID2->Array(Celdas2);
    GRID2->ReBind();
}

void NEW_DOLAR::CIERRA_NOTI_Click() { Frame1->hide(); }
