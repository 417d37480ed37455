#include "consola.h"
#include "controles.h"
#include "dialogo.h"
#include "fallo.h"
#include "formato.h"
#include "login.h"
#include "mdiform1.h"
#include "mensajes.h"
#include "module1.h"
#include "numeros.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFontMetrics>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QTableView>

#include <cmath>

using namespace Numeros;
using Mensajes::MsgBox;

namespace {

// Patterns of the load, read once for all rows.
const FormatoNumero f0000(QStringLiteral("0000"));
const FormatoNumero f00(QStringLiteral("00"));
const FormatoNumero fEnvio(QStringLiteral("####.00"));
const FormatoNumero f3_0_00(QStringLiteral("###0.00"));
const FormatoNumero f2_0_00(QStringLiteral("##0.00"));
const FormatoNumero fMiles00(QStringLiteral("###,###.00"));
const FormatoNumero fTasa(QStringLiteral("###0.0000"));
const FormatoNumero fTexto(QStringLiteral("&"));

// The text the server reads: the decimal comma becomes a point.
QString punto(QString texto) { return texto.replace(QLatin1Char(','), QLatin1Char('.')); }

// A division of the run-time: by zero it stops the program.
double dividir(double a, double b)
{
    if (b == 0)
        throw FalloEjecucion::divisionPorCero();
    return a / b;
}

// One assignment of a saved row's statement.
QString asigna(const char* campo, const QString& valor)
{
    return QStringLiteral(" %1 =  '").arg(QLatin1String(campo)) + valor + QStringLiteral("',");
}

// Rounded to 4 decimals, ties to even, as the run-time's Round.
double redondea4(double valor) { return std::nearbyint(valor * 10000.0) / 10000.0; }

// The hourglass for the length of a query, also when it fails.
struct RelojDeArena {
    RelojDeArena() { Pantalla::Reloj_De_Arena(true); }
    ~RelojDeArena() { Pantalla::Reloj_De_Arena(false); }
};

Alineacion alineacionDe(char a)
{
    switch (a) {
    case 'C':
        return Alineacion::Centro;
    case 'R':
        return Alineacion::Derecha;
    default:
        return Alineacion::General;
    }
}

} // namespace

Consola::Consola(Module1& modulo, MDIForm1& p, const QString& nombre, const QString& titulo)
    : Pantalla(modulo, p, nombre), recibo(modulo)
{
    setWindowTitle(titulo);

    auto etiqueta = [this](const QString& texto, int x, int y, int w) {
        auto* l = new QLabel(texto, this);
        l->setGeometry(x, y, w, 26);
        return l;
    };
    auto campo = [this](const QString& nombreCampo, const QString& accesible, int x, int y, int w) {
        auto* t = new QLineEdit(this);
        t->setGeometry(x, y, w, 26);
        Controles::Nombrar(t, nombreCampo, accesible);
        return t;
    };
    auto fecha = [this](const QString& nombreFecha, const QString& accesible, int x) {
        auto* f = new QDateEdit(QDate::currentDate(), this);
        f->setGeometry(x, 6, 118, 26);
        f->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
        f->setCalendarPopup(true);
        Controles::Nombrar(f, nombreFecha, accesible);
        return f;
    };
    auto marco = [this](const QString& titulo, int x, int w, const std::vector<const char*>& opciones,
                        QRadioButton** botones, const QString& arreglo) {
        auto* g = new QGroupBox(titulo, this);
        g->setGeometry(x, 36, w, 52);
        int bx = 10;
        for (size_t i = 0; i < opciones.size(); ++i) {
            const QString texto = QString::fromUtf8(opciones[i]);
            auto* b = new QRadioButton(texto, g);
            const int ancho = b->sizeHint().width() + 4;
            b->setGeometry(bx, 22, ancho, 24);
            bx += ancho + 6;
            Controles::Nombrar(b, arreglo, int(i), texto);
            botones[i] = b;
        }
    };

    // ---- the query's filters, top
    etiqueta(QStringLiteral("Desde"), 8, 6, 44);
    Fecha1 = fecha(QStringLiteral("Fecha1"), QStringLiteral("Desde"), 52);
    etiqueta(QStringLiteral("Hasta"), 178, 6, 40);
    Fecha2 = fecha(QStringLiteral("Fecha2"), QStringLiteral("Hasta"), 218);
    Check2 = new QCheckBox(this);
    Check2->setGeometry(346, 8, 22, 22);
    Check2->setToolTip(QStringLiteral("Buscar desde enero de 2023"));
    Controles::Nombrar(Check2, QStringLiteral("Check2"), QStringLiteral("Buscar desde enero de 2023"));
    Text2 = campo(QStringLiteral("Text2"), QStringLiteral("Buscar"), 370, 6, 170);
    Text2->setPlaceholderText(QStringLiteral("Cliente, referencia o nota"));
    Text3 = campo(QStringLiteral("Text3"), QStringLiteral("Buscar también"), 546, 6, 170);
    SELECCIONA = Controles::Boton(this, QStringLiteral("SELECCIONA"), QStringLiteral("RUN"), 722, 4, 60);
    Combo1 = new QComboBox(this);
    Combo1->setGeometry(790, 6, 320, 26);
    Controles::Nombrar(Combo1, QStringLiteral("Combo1"), QStringLiteral("Servicio"));
    etiqueta(QStringLiteral("$"), 1118, 6, 12);
    Text8 = campo(QStringLiteral("Text8"), QStringLiteral("Dólar de referencia"), 1130, 6, 90);
    Text9 = campo(QStringLiteral("Text9"), QStringLiteral("Dólar base"), 1226, 6, 90);
    // The prices a payment run stores with its rows: shown at each query, and
    // the operator may correct them before paying.
    Text8->setAlignment(Qt::AlignRight);
    Text9->setAlignment(Qt::AlignRight);

    marco(QStringLiteral("Seleccionar"), 8, 280, {"Todos", "Pagados", "No Pagados"}, Option1.data(),
          QStringLiteral("Option1"));
    marco(QStringLiteral("Operadora"), 296, 250, {"Todas", "Ramil", "Noelina"}, Option2.data(),
          QStringLiteral("Option2"));
    marco(QStringLiteral("Tipo de Servicio"), 554, 340, {"Todos", "Trum", "Zelle", "Zinli", "Amaz"}, Option3.data(),
          QStringLiteral("Option3"));
    Label1 = new QLabel(this);
    Label1->setGeometry(904, 50, 440, 30);
    QFont negrita = Label1->font();
    negrita.setBold(true);
    Label1->setFont(negrita);
    Controles::Nombrar(Label1, QStringLiteral("Label1"), QStringLiteral("Tasas del momento"));

    // ---- the grid
    GRID = new Rejilla(QStringLiteral("GRID"), this);
    GRID->setGeometry(8, 96, 1336, 488);
    GRID->vista()->installEventFilter(this);

    // ---- the day's work, bottom
    const int yb = 592;
    ACTUALIZAR = Controles::Boton(this, QStringLiteral("ACTUALIZAR"), QStringLiteral("Actualizar "), 8, yb, 110);
    Text4 = campo(QStringLiteral("Text4"), QStringLiteral("Precio a fijar"), 126, yb + 2, 80);
    Text4->setAlignment(Qt::AlignRight);
    FIJAR = Controles::Boton(this, QStringLiteral("FIJAR"), QStringLiteral("Fijar $"), 210, yb, 80);
    Text5 = campo(QStringLiteral("Text5"), QStringLiteral("Suma seleccionados"), 298, yb + 2, 120);
    Text5->setReadOnly(true);
    Text5->setAlignment(Qt::AlignRight);
    Sumarizar = Controles::Boton(this, QStringLiteral("Sumarizar"), QStringLiteral("Sumarizar Seleccionados"), 424, yb, 200);
    Check1 = new QCheckBox(QStringLiteral("Tabla"), this);
    Check1->setGeometry(636, yb + 4, 70, 22);
    Controles::Nombrar(Check1, QStringLiteral("Check1"), QStringLiteral("Tabla"));
    etiqueta(QStringLiteral("Concepto"), 712, yb + 2, 66);
    Text6 = campo(QStringLiteral("Text6"), QStringLiteral("Concepto"), 778, yb + 2, 56);
    Text7 = campo(QStringLiteral("Text7"), QStringLiteral("Aviso"), 840, yb + 2, 156);
    Text7->setReadOnly(true);
    Text7->hide();
    RECIBO_PDF = Controles::Boton(this, QStringLiteral("RECIBO_PDF"), QStringLiteral("PDF"), 1004, yb, 56);
    RECIBO_XPS = Controles::Boton(this, QStringLiteral("RECIBO_XPS"), QStringLiteral("XPS"), 1064, yb, 56);
    COPIAR = Controles::Boton(this, QStringLiteral("COPIAR"), QStringLiteral("Copiar Recibo"), 1124, yb, 116);
    SALIR = Controles::Boton(this, QStringLiteral("SALIR"), QStringLiteral("Salir"), 1254, yb, 90);

    // ---- events
    connect(Combo1, &QComboBox::activated, this, [this] { CONSULTAR(); });
    for (QRadioButton* b : Option1)
        connect(b, &QRadioButton::toggled, this, [this](bool puesto) {
            if (puesto)
                CONSULTAR();
        });
    for (QRadioButton* b : Option2)
        connect(b, &QRadioButton::toggled, this, [this](bool puesto) {
            if (puesto)
                Option2_Click();
        });
    Controles::AlPulsarEnter(Text2, [this] { CONSULTAR(); });
    Controles::AlPulsarEnter(Text3, [this] { CONSULTAR(); });
    connect(SELECCIONA, &QPushButton::clicked, this, [this] { SELECCIONA_Click(); });
    connect(SALIR, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ACTUALIZAR, &QPushButton::clicked, this, [this] { ACTUALIZAR_Click(); });
    connect(FIJAR, &QPushButton::clicked, this, [this] { FIJAR_Click(); });
    connect(Sumarizar, &QPushButton::clicked, this, [this] { Sumarizar_Click(); });
    connect(Check1, &QCheckBox::clicked, this, [this] { Check1_Click(); });
    Controles::AlPulsarEnter(Text6, [this] { Text6_Enter(); });
    Text6->installEventFilter(this);
    connect(RECIBO_PDF, &QPushButton::clicked, this, [this] { RECIBO_PDF_Click(); });
    connect(RECIBO_XPS, &QPushButton::clicked, this, [this] { RECIBO_XPS_Click(); });
    connect(COPIAR, &QPushButton::clicked, this, [this] { COPIAR_Click(); });
    connect(GRID, &Rejilla::AfterColEdit, this, [this](int col) { GRID_AfterColEdit(col); });
    connect(GRID, &Rejilla::HeadClick, this, [this](int col) { GRID_HeadClick(col); });
    connect(GRID, &Rejilla::DblClick, this, [this] { GRID_DblClick(); });
    connect(GRID, &Rejilla::Click, this, [this] {
        if (GRID->Col() == 17 && GRID->Bookmark() >= 0)
            Marcar(GRID->Bookmark());
    });
}

void Consola::Form_Load() { Colocar(10, 10, 20400, 10000); }

void Consola::Form_Activate()
{
    if (Cargado)
        return;
    Precios_Del_Momento();
    Text2->clear();
    Text3->clear();
    Text4->clear();
    m.L = 0;
    const auto monto = [this](int servicio) { return Format(double(m.Monto_T(servicio)), QStringLiteral("###.00")); };
    Label1->setText(QStringLiteral(" TRU = ") + monto(1) + QStringLiteral("   ") + QStringLiteral(" ZEL = ") + monto(2) +
                    QStringLiteral("   ZIN = ") + monto(3) + QStringLiteral("   ") + QStringLiteral(" AMA = ") + monto(4));
    Llena_Combo();
    Option1[0]->setChecked(true); // queries through its click
    Option2[0]->setChecked(true); // does not: the screen is not loaded yet
    Cargado = 1;
}

void Consola::Precios_Del_Momento()
{
    Text8->setText(Format(m.Compra_T(1), QStringLiteral("###.00")));
    Text9->setText(Format(m.Compra_T(2), QStringLiteral("###.00")));
}

void Consola::Llena_Combo()
{
    Combo1->clear();
    Combo1->addItem(QStringLiteral("00") + QStringLiteral(" - TODOS"));
    for (int i = 1; i <= m.N_Servicios; ++i) {
        const auto& servicio = m.Servicios_T(i);
        if (servicio[1].isEmpty())
            continue;
        Combo1->addItem(Format(double(i), QStringLiteral("00")) + QStringLiteral(" - ") +
                        servicio[2].leftJustified(12, QLatin1Char(' '), true) + QStringLiteral(" (") +
                        StrSng(m.Monto_T(i)) + QStringLiteral(")"));
    }
    Combo1->addItem(QStringLiteral("98") + QStringLiteral(" - TODOS SW_CALCULO=1"));
    Combo1->addItem(QStringLiteral("99") + QStringLiteral(" - TODOS SW_CALCULO=2"));
    Combo1->setCurrentIndex(0);
}

void Consola::Option2_Click()
{
    if (Cargado)
        CONSULTAR();
}

void Consola::SELECCIONA_Click()
{
    LOGIN::Carga_Parametros(m);
    CONSULTAR();
}

// ------------------------------------------------------------------ grid layout

std::vector<Consola::DefColumna> Consola::Columnas() const
{
    return {
        {"Fecha", 1100, 'C', true, 0},       {"Sec.", 600, 'C', true, 0},      {"C-C", 600, 'C', true, -1},
        {"Cliente", 2200, 'G', false, 0},    {"Envio", 1150, 'R', false, -1},  {"Recibido", 1150, 'R', false, -1},
        {"C-P", 600, 'C', false, -1},        {"Proveedor", 900, 0, false, 0},  {"Estimado", 1150, 'R', true, 0},
        {"C-B", 600, 0, false, -1},          {"Banco", 100, 0, false, 0},      {"Referencia", 600, 0, false, -1},
        {"M", 1, 0, false, -1},              {"Op", 400, 'C', false, -1},      {"T", 200, 'C', false, -1},
        {"Pagado", 1300, 'R', false, 1},     {"Factor ", 900, 'R', true, 1},   {"Sel", 400, 'C', false, -1},
        {"T-S", 500, 'C', false, -1},        {"Servicio", 1000, 0, false, 0},  {" %", 700, 'R', true, 0},
        {" G2", 950, 'R', true, -1},         {"Nota", 800, 0, false, -1},      {"G-1", 900, 'R', true, 0},
        {"G-2", 900, 'R', true, 0},          {"G-3", 900, 'R', false, -1},     {"Fecha_P", 1200, 'C', true, -1},
        {"Hora_P", 1200, 'C', true, -1},     {"Regalo", 1200, 'G', true, -1},  {"Dolar 1", 900, 'C', true, -1},
        {"Dolar 2", 900, 'C', true, -1},     {"Ze", 300, 'C', false, -1},
    };
}

std::vector<std::pair<int, int>> Consola::Movidas() const
{
    return {{13, 1}, {16, 10}, {12, 16}, {18, 16}, {19, 17}, {22, 5}, {25, 23}, {31, 18}};
}

std::vector<int> Consola::Ocultas() const { return {24, 12}; }

std::vector<std::pair<int, QString>> Consola::Montos_Mayores()
{
    // Dollars to 99.999,99, bolivars to 99.999.999,99, rates to 9.999,9999,
    // gains to 9.999,99: the largest the business writes in each column.
    return {{4, QStringLiteral("99.999,99")},     {5, QStringLiteral("99.999,99")},
            {8, QStringLiteral("99.999.999,99")}, {15, QStringLiteral("99.999.999,99")},
            {16, QStringLiteral("9.999,9999")},   {21, QStringLiteral("9.999,99")},
            {23, QStringLiteral("9.999,99")},     {24, QStringLiteral("9.999,99")}};
}

bool Consola::Caben_Montos(const QFont& letra) const
{
    const QFontMetrics medida(letra);
    // The cell's text margins on both sides, and the grid line.
    const QTableView* vista = GRID->vista();
    const int margenes = 2 * (vista->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, vista) + 1) + 1;
    for (const auto& [col, monto] : Montos_Mayores())
        if (medida.horizontalAdvance(monto) + margenes > Pantalla::px(GRID->Columns(col).Width()))
            return false;
    return true;
}

void Consola::Elige_Letra()
{
    // Narrowed letters, the largest with which the widest amounts fit their
    // columns whole (the widths are fixed); the row's height caps them.
    QFont letra = GRID->vista()->font();
    letra.setStretch(QFont::Condensed);
    int pixeles = 13;
    letra.setPixelSize(pixeles);
    while (pixeles > 8 && !Caben_Montos(letra))
        letra.setPixelSize(--pixeles);
    GRID->vista()->setFont(letra);
    GRID->setFontSize(pixeles * 72.0 / GRID->logicalDpiY());
}

void Consola::ARMAR_GRID()
{
    GRID->setAllowUpdate(true);
    GRID->setRowHeight(300);
    GRID->setColumnFooters(true);

    const std::vector<DefColumna> columnas = Columnas();
    const int ultima = int(columnas.size()) - 1;
    for (int c = 0; c <= ultima; ++c)
        GRID->Columns(c).setWidth(columnas[size_t(c)].ancho);
    Elige_Letra();
    for (int c = 0; c <= ultima; ++c)
        GRID->Columns(c).setCaption(QString::fromUtf8(columnas[size_t(c)].titulo));
    for (int c = 0; c <= ultima; ++c) {
        const DefColumna& d = columnas[size_t(c)];
        Columna col = GRID->Columns(c);
        col.setHeadAlignment(d.cabezaCentrada ? Alineacion::Centro : Alineacion::General);
        col.setAlignment(alineacionDe(d.alineacion));
        if (d.bloqueo >= 0)
            col.setLocked(d.bloqueo == 1);
        col.setVisible(true);
    }
    // "Sel" is ticked by a click or the space bar, not typed.
    if (ultima >= 17)
        GRID->Columns(17).setLocked(true);
    // Texts saved as they are typed take no more than their columns hold:
    // bank code, reference, operator and note.
    for (const auto& [col, largo] : {std::pair{9, 10}, {11, 50}, {13, 5}, {22, 500}})
        if (col <= ultima)
            GRID->Columns(col).setDataWidth(largo);

    Celdas.ReDim(-1, -1, 0, ultima);

    // Each query lays the columns out anew from the design order, so that the
    // moves give the same arrangement every time.
    for (int c = 0; c <= ultima; ++c)
        GRID->Columns(c).setOrder(c);
    for (const auto& [col, posicion] : Movidas())
        GRID->Columns(col).setOrder(posicion);
    for (int col : Ocultas())
        GRID->Columns(col).setVisible(false);

    GRID->Array(Celdas);
}

void Consola::Reenlaza()
{
    if (GRID->array() == &Celdas && GRID->modelo()->rowCount() == Celdas.filas()) {
        GRID->Refresh();
        return;
    }
    const int fila = GRID->Bookmark(), col = GRID->Col();
    GRID->Array(Celdas);
    if (fila >= 0) {
        GRID->setBookmark(fila);
        GRID->setCol(col);
    }
}

int Consola::FilaI() const { return int(m.I.aDouble()); }

// ------------------------------------------------------------------ the query

const QString& Consola::Codigo(double valor)
{
    auto& codigos = compartidos.codigos;
    if (valor < 0 || valor > 9999 || valor != std::floor(valor))
        return Cifra(-1, f0000, valor);
    if (codigos.empty())
        codigos.resize(10000);
    QString& t = codigos[size_t(valor)];
    if (t.isNull())
        t = f0000(valor);
    return t;
}

const QString& Consola::Cifra(int col, const FormatoNumero& formato, double valor)
{
    // Column -1: no sharing, a scratch slot.
    static thread_local Compartidos::Ultimo suelto;
    Compartidos::Ultimo& u = col >= 0 && col < int(compartidos.ultimos.size()) ? compartidos.ultimos[size_t(col)] : suelto;
    if (!u.lleno || u.valor != valor || col < 0) {
        u.valor = valor;
        u.lleno = true;
        u.texto = formato(valor);
    }
    return u.texto;
}

const QString& Consola::Fecha_Vista(int cual, const QString& amd)
{
    auto& [clave, texto] = compartidos.fechas[size_t(cual)];
    if (texto.isNull() || clave != amd) {
        clave = amd;
        texto = Module1::Fecha_DMA(amd);
    }
    return texto;
}

const std::array<QString, 3>& Consola::Banco_Vista(const QString& banco)
{
    for (const auto& b : compartidos.bancos)
        if (b[0] == banco)
            return b;
    compartidos.bancos.push_back({banco, Format(banco, QStringLiteral("0000")), m.Nombre_Banco(banco)});
    return compartidos.bancos.back();
}

const QString& Consola::Nombre_Servicio(int16_t servicio)
{
    auto& nombres = compartidos.nombres;
    const QString& nombre = m.Servicios_T(servicio)[2]; // a code out of range stops here
    if (nombres.empty())
        nombres.resize(size_t(m.Servicios_T.UBound()) + 1);
    QString& t = nombres[size_t(servicio)];
    if (t.isNull())
        t = nombre.left(14);
    return t;
}

double Consola::Comision(int16_t fila)
{
    auto& c = compartidos.comisiones;
    const QString& texto = m.Proveedores_T(fila, 4); // a row out of the cache stops here
    if (size_t(fila) >= c.size())
        c.resize(size_t(fila) + 1, std::nan(""));
    if (std::isnan(c[size_t(fila)]))
        c[size_t(fila)] = CDbl(texto);
    return c[size_t(fila)];
}

const Valor& Consola::Campo(int ordinal) const
{
    if (ordinal < 0)
        throw FalloEjecucion::campoNoEncontrado(QString());
    return m.Rs->Fields(ordinal);
}

void Consola::Prepara_Campos()
{
    compartidos = Compartidos();
    const auto pos = [this](const char* nombre) {
        const QString n = QString::fromLatin1(nombre);
        return m.Rs->TieneCampo(n) ? m.Rs->Ordinal(n) : -1;
    };
    Campos& c = campos;
    c.Fecha = pos("Fecha");
    c.secuenciA = pos("secuenciA");
    c.C_CLIENTE = pos("C_CLIENTE");
    c.Cliente = pos("Cliente");
    c.Enviado = pos("Enviado");
    c.recibido = pos("recibido");
    c.C_proveedor = pos("C_proveedor");
    c.bancozelle = pos("bancozelle");
    c.tipo_servicio = pos("tipo_servicio");
    c.C_Banco = pos("C_Banco");
    c.confirmacion = pos("confirmacion");
    c.Pago = pos("Pago");
    c.referencia = pos("referencia");
    c.operadora = pos("operadora");
    c.tipo_operacion = pos("tipo_operacion");
    c.OBS = pos("OBS");
    c.Ganancia = pos("Ganancia");
    c.G1 = pos("G1");
    c.G2 = pos("G2");
    c.G3 = pos("G3");
    c.fecha_pago = pos("fecha_pago");
    c.hora_pago = pos("hora_pago");
    c.dolar1 = pos("dolar1");
    c.dolar2 = pos("dolar2");
}

void Consola::CONSULTAR()
{
    // Each query works with the prices and the cache of the moment.
    LOGIN::Carga_Parametros(m);
    Precios_Del_Momento();
    RelojDeArena reloj;

    Total_Enviado = Total_Recibido = Total_Estimado = Total_Pagado = 0;
    Total_G1 = Total_G2 = Total_G3 = 0;
    Total_Filas = 0;
    Suma_Sel = 0;
    Text4->clear();
    ARMAR_GRID();

    const auto marcada = [](const auto& botones) {
        for (size_t i = 0; i < botones.size(); ++i)
            if (botones[i]->isChecked())
                return int(i);
        return 0;
    };
    m.K = marcada(Option1);
    m.L = marcada(Option2);
    const QString servicio = Combo1->currentText().left(2);
    m.Cuenta = EsNumerico(servicio) ? CLng(CDbl(servicio)) : 0;

    QString desde = Module1::Fecha_AMD(Fecha1->date().toString(QStringLiteral("dd/MM/yyyy")));
    // A search by name runs over everything since January 2023.
    if (Check2->isChecked() && Text2->text().length() >= 1) {
        m.Cuenta = 0;
        m.K = 0;
        desde = QStringLiteral("202301");
    }

    m.Cierra_Rs();
    m.Prepara_Comando(Procedimiento());
    m.Comando.Parameters(1) = Valor(desde);
    m.Comando.Parameters(2) = Valor(Module1::Fecha_AMD(Fecha2->date().toString(QStringLiteral("dd/MM/yyyy"))));
    m.Comando.Parameters(3) = Valor(int(CInt(m.K.aDouble())));
    m.Comando.Parameters(4) = Valor(int(CInt(m.L.aDouble())));
    m.Comando.Parameters(5) = Valor(Text2->text().trimmed());
    m.Comando.Parameters(6) = Valor(Text3->text().trimmed());
    m.Comando.Parameters(7) = Valor(int(m.Cuenta));
    m.Ejecuta_Comando();
    // What this screen saw of each row: its saves and deletes are checked against it.
    Versiones_Cargadas = m.Conexion.VersionesDeLaCarga();

    const int ultima = Celdas.UpperBound(2);
    int fila = -1;
    m.I = fila;
    Prepara_Campos();
    while (!m.Rs->Eof()) {
        ++fila;
        m.I = fila;
        Celdas.ReDim(0, fila, 0, ultima);
        Llena_Fila(fila);
        m.Rs->MoveNext();
    }

    Escribe_Pies();
    m.Cierra_Rs();
    Total_Estimado = 0;
    GRID->Array(Celdas);

    Text2->clear();
    Text3->clear();
    Text6->clear();
    Check2->setChecked(true);
    m.Sel_Cuenta = 0;
    m.Sel_Total = 0;
    Suma_Sel = 0;
    GRID->setBookmark(fila);
}

Consola::Registro Consola::Lee_Registro() const
{
    const Campos& c = campos;
    Registro r;
    r.banco = Campo(c.C_Banco).aTexto();
    r.devuelta = r.banco == QLatin1String("7777");
    r.enviado = Campo(c.Enviado).aDouble();
    r.recibido = Campo(c.recibido).aDouble();
    r.pago = Campo(c.Pago).aDouble();
    r.servicio = CInt(Campo(c.tipo_servicio).aDouble());
    r.proveedor = CInt(Campo(c.C_proveedor).aDouble());
    return r;
}

void Consola::Llena_Fila(int i)
{
    const Campos& c = campos;
    const auto [banco, devuelta, enviado, recibido, pago, servicio, proveedor] = Lee_Registro();

    Celdas(i, 0) = Fecha_Vista(0, Campo(c.Fecha).aTexto());
    Celdas(i, 1) = Codigo(Campo(c.secuenciA).aDouble());
    Celdas(i, 2) = Codigo(Campo(c.C_CLIENTE).aDouble());
    Celdas(i, 3) = Campo(c.Cliente).aTexto();
    Celdas(i, 4) = Cifra(4, fEnvio, enviado);
    Celdas(i, 5) = Cifra(5, f3_0_00, recibido);
    Celdas(i, 6) = Codigo(proveedor);
    QString nombreProveedor = m.Nombre_Proveedor(proveedor);
    if (nombreProveedor == QLatin1String("0"))
        nombreProveedor.clear();
    Celdas(i, 7) = nombreProveedor;

    // An unpaid row of a service in another currency shows its dollars at today's price.
    if (servicio > 49 && banco.isEmpty()) {
        m.Monto_Conv = Num(i, 4);
        m.Convierte_Dolar(m.Monto_Conv, servicio);
        Celdas(i, 5) = Cifra(-1, f2_0_00, m.Monto_Usd);
    }
    Celdas(i, 16) = Cifra(16, fTasa, Campo(c.confirmacion).aDouble());
    m.K = servicio;
    if (banco.isEmpty()) {
        // Unpaid: the price of the moment, and the estimate at it.
        const double precio = m.Monto_T(servicio);
        Celdas(i, 16) = Cifra(16, fTasa, precio);
        const double bs = (servicio == 1 || servicio == 9 ? recibido : enviado) * precio;
        const double estimado = servicio < 50 ? Int(bs) : bs;
        Celdas(i, 8) = Cifra(8, fMiles00, estimado);
        Total_Estimado += estimado;
    }
    if (!banco.isEmpty())
        Celdas(i, 15) = Cifra(15, fMiles00, pago);

    Llena_Datos(i, banco, servicio);
    Celdas(i, 19) = Nombre_Servicio(servicio);

    double ganancia = Campo(c.Ganancia).aDouble();
    double g1 = Campo(c.G1).aDouble(), g2 = Campo(c.G2).aDouble(), g3 = Campo(c.G3).aDouble();
    if (devuelta)
        ganancia = g1 = g2 = g3 = 0;
    Total_G1 += g1;
    Total_G2 += g2;
    Total_G3 += g3;
    Celdas(i, 20) = Cifra(20, f3_0_00, ganancia);
    Celdas(i, 21) = Cifra(21, f3_0_00, g2);
    Celdas(i, 23) = Cifra(23, f2_0_00, g1);
    Celdas(i, 24) = Cifra(24, f2_0_00, g2);
    Celdas(i, 25) = Cifra(25, f2_0_00, g3);

    // The payment's date, gift and prices, and the Zelle bank, where the grid has them.
    if (Celdas.UpperBound(2) >= 31) {
        const QString fechaPago = Campo(c.fecha_pago).aTexto();
        if (fechaPago.size() > 1 && banco.size() > 1) {
            Celdas(i, 26) = Fecha_Vista(1, fechaPago);
            Celdas(i, 27) = Campo(c.hora_pago).aTexto();
        }
        Celdas(i, 28) = QString();
        Celdas(i, 29) = QString();
        Celdas(i, 30) = QString();
        if (banco.size() > 1) {
            // The provider's commission, read by the code used as the row of the cache.
            Celdas(i, 28) = Str(redondea4(recibido * Comision(proveedor) / 100));
            Celdas(i, 29) = Cifra(29, f2_0_00, Campo(c.dolar1).aDouble());
            Celdas(i, 30) = Cifra(30, f2_0_00, Campo(c.dolar2).aDouble());
        }
        Celdas(i, 31) = Campo(c.bancozelle).aTexto();
    }

    if (!devuelta) {
        Total_Enviado += enviado;
        Total_Recibido += recibido;
    }
    if (!banco.isEmpty())
        Total_Pagado += pago;
    ++Total_Filas;
    if (devuelta) {
        Celdas(i, 20) = QString();
        Celdas(i, 21) = QString();
    }
}

void Consola::Llena_Datos(int i, const QString& banco, int16_t servicio)
{
    const Campos& c = campos;
    const auto& vistaBanco = Banco_Vista(banco);
    Celdas(i, 9) = vistaBanco[1];
    Celdas(i, 10) = vistaBanco[2];
    Celdas(i, 11) = Campo(c.referencia).aTexto();
    Celdas(i, 13) = Campo(c.operadora).aTexto();
    const Valor& operacion = Campo(c.tipo_operacion);
    Celdas(i, 14) = operacion.esTexto() ? operacion.aTexto() : Cifra(14, fTexto, operacion.aDouble());
    Celdas(i, 18) = Cifra(18, f00, servicio);
    Celdas(i, 22) = Campo(c.OBS).aTexto();
    Celdas(i, 17) = 0;
}

void Consola::Pies_Comunes()
{
    const QString dinero = QStringLiteral("###,##0.00");
    GRID->Columns(5).setFooterText(Format(Total_Recibido, QStringLiteral("#,###,##0.00")));
    GRID->Columns(15).setFooterText(Format(Total_Pagado, dinero));
    GRID->Columns(2).setFooterText(Format(double(Total_Filas), QStringLiteral("###,##0")));
    GRID->Columns(8).setFooterText(Format(Total_Estimado, dinero));
    GRID->Columns(0).setFooterText(QString());
}

void Consola::Escribe_Pies()
{
    const QString dinero = QStringLiteral("###,##0.00");
    Pies_Comunes();
    GRID->Columns(21).setFooterText(Format(Total_G2, dinero));
    GRID->Columns(23).setFooterText(Format(Total_G1, dinero));
    GRID->Columns(24).setFooterText(Format(Total_G2, dinero));
    GRID->Columns(25).setFooterText(Format(Total_G3, dinero));
}

void Consola::GRID_HeadClick(int col)
{
    const bool texto = col == 0 || col == 3 || col == 7 || col == 19;
    GRID->ordenarPorColumna(col, !texto);
}

// ------------------------------------------------------------------ cell edits

void Consola::GRID_AfterColEdit(int c)
{
    m.K = c;
    const bool cifra = c == 4 || c == 5 || c == 8 || c == 11 || c == 16;
    if (!cifra)
        GRID->Update();
    const int i = GRID->Bookmark();
    m.I = i;
    // Any edit marks the row for the next save, changed or not.
    Celdas(i, 12) = QStringLiteral("1");
    GRID->Update();

    switch (c) {
    case 17:
        // A paid row has no estimate and counts as 0.
        Suma_Sel = Celdas(i, 17) == -1 ? CLng(Suma_Sel + Num(i, 8)) : CLng(Suma_Sel - Num(i, 8));
        Text5->setText(Format(double(Suma_Sel), Formato_Suma()));
        break;
    case 9: {
        const QString codigo = Txt(i, 9);
        if (codigo == QLatin1String("7777"))
            Banco_Devolucion(i);
        else if (codigo == QLatin1String("8888"))
            Banco_Reverso(i);
        else
            Banco_Pago(i, codigo);
        return;
    }
    case 2:
        Celdas(i, 3) = m.Nombre_Cliente(CInt(Num(i, 2)));
        Reenlaza();
        break;
    case 6:
        Celdas(i, 7) = m.Nombre_Proveedor(CInt(Num(i, 6)));
        Reenlaza();
        GRID->setCol(9);
        break;
    default:
        break;
    }

    if (cifra) {
        Celdas(i, 12) = QStringLiteral("1");
        GRID->Update();
    }
    switch (c) {
    case 5: {
        // Either decimal mark may be typed.
        Celdas(i, 5) = Txt(i, 5).replace(QLatin1Char('.'), QLatin1Char(','));
        Celdas(i, 5) = Format(Celdas(i, 5), QStringLiteral("###0.00"));
        const float bs = CSng(Num(i, 5) * double(m.Dolar_Actual));
        Celdas(i, 8) = Format(Fix(bs), QStringLiteral("###,##0"));
        Reenlaza();
        break;
    }
    case 16: {
        Celdas(i, 16) = Txt(i, 16).replace(QLatin1Char('.'), QLatin1Char(','));
        const double bs = Num(i, 18) < 50 ? Int(Num(i, 16) * Num(i, 5)) : Num(i, 16) * Num(i, 4);
        Celdas(i, 8) = Format(bs, QStringLiteral("###,##0.00"));
        Reenlaza();
        GRID->setCol(9);
        break;
    }
    case 18:
        Servicio_Editado(i);
        break;
    default:
        break;
    }
}

void Consola::Servicio_Editado(int i)
{
    const double servicio = Num(i, 18);
    if (servicio <= 100)
        Celdas(i, 19) = m.Servicios_T(long(CInt(servicio)))[2];
    Reenlaza();
    GRID->setCol(18);
}

void Consola::Banco_Devolucion(int i)
{
    Celdas(i, 10) = QStringLiteral("Devoluciön");
    Celdas(i, 11) = QString();
    Celdas(i, 15) = QStringLiteral("0");
    Celdas(i, 20) = QStringLiteral("0");
    Celdas(i, 21) = QStringLiteral("0");
    Reenlaza();
}

void Consola::A_No_Pagada(int i)
{
    // Back to unpaid: what was paid is the estimate again, and all of what
    // was received counts as gain until the row is paid anew.
    Celdas(i, 8) = Celdas(i, 15);
    for (int c : {7, 9, 10, 11})
        Celdas(i, c) = QString();
    Celdas(i, 15) = QStringLiteral("0");
    Celdas(i, 20) = QStringLiteral("100");
    for (int c : {21, 23, 24})
        Celdas(i, c) = Celdas(i, 5);
    Celdas(i, 25) = QStringLiteral("0");
}

void Consola::Banco_Reverso(int i)
{
    A_No_Pagada(i);
    Celdas(i, 26) = QString();
    Celdas(i, 27) = QString();
    for (int c : {28, 29, 30})
        Celdas(i, c) = QStringLiteral("0");
    // Read after the gift cell was cleared: the statement takes back nothing.
    Regalo_Row = Num(i, 28);
    m.SQL = QStringLiteral(" UPDATE proveedor SET ") + QStringLiteral(" regalo = regalo -  '") + Str(Regalo_Row) +
            QStringLiteral("' ") + QStringLiteral(" WHERE C_proveedor =  '") + Txt(i, 6) + QStringLiteral("'");
    m.SQL.replace(QLatin1Char(','), QLatin1Char('.'));
    m.Conexion.Execute(m.SQL);
    Celdas(i, 27) = QString();
    Celdas(i, 6) = QStringLiteral("0000");
    Reenlaza();
}

bool Consola::Banco_Registrado(int i, const QString& codigo)
{
    Celdas(i, 10) = m.Nombre_Banco(codigo);
    if (Txt(i, 10) == codigo || !EsNumerico(codigo)) {
        MsgBox(QStringLiteral("Error : Banco no registrado"), Mensajes::vbCritical);
        Celdas(i, 10) = QString();
        Celdas(i, 9) = QString();
        Reenlaza();
        GRID->setFocus();
        GRID->setCol(9);
        GRID->setBookmark(FilaI());
        return false;
    }
    return true;
}

void Consola::Banco_Pago(int i, const QString& codigo)
{
    if (!Banco_Registrado(i, codigo))
        return;
    Tipo_Serv = CInt(Num(i, 18));
    const float bs = Tipo_Serv < 50 ? CSng(Num(i, 5) * Num(i, 16)) : CSng(Num(i, 4) * Num(i, 16));
    Celdas(i, 15) = Format(Int(bs), QStringLiteral("###,##0.00"));
    Monto_Texto = Txt(i, 8).remove(QLatin1Char('.'));
    Monto_Calc = CDbl(Monto_Texto);
    CALCULA_PORCENTAJE(Monto_Calc, Tipo_Serv);
    Celdas(i, 20) = Format(double(Porcentaje), QStringLiteral("##0.00"));
    Celdas(i, 21) = Format(Num(i, 5) * Num(i, 20) / 100, QStringLiteral("##0.00"));
    Celdas(i, 23) = Celdas(i, 21);
    Celdas(i, 24) = Celdas(i, 21);
    Celdas(i, 8) = QString();
    Reenlaza();
    GRID->setCol(11);
}

void Consola::CALCULA_PORCENTAJE(double& Monto, int16_t& Servicio)
{
    Porcentaje = 0;
    float costo = 0;
    // The price of service 50 and up is the other way round from the
    // dollar conversion of the entry: 1 divides by the base price, 2 by the
    // service's own.
    if (Servicio < 50)
        costo = CSng(dividir(Monto, m.Compra_T(1)));
    if (Servicio >= 50 && m.Div_T(Servicio) == 1.0)
        costo = CSng(dividir(Monto, m.Compra_T(2)));
    if (Servicio >= 50 && m.Div_T(Servicio) == 2.0)
        costo = CSng(dividir(Monto, m.Compra_T(Servicio)));
    const float parte = CSng(dividir(costo, Num(FilaI(), 5)));
    Porcentaje = CSng(std::fabs(1.0 - double(parte)) * 100.0);
}

void Consola::Marcar(int fila)
{
    GRID->setBookmark(fila);
    Celdas(fila, 17) = Celdas(fila, 17) == -1 ? 0 : -1;
    GRID_AfterColEdit(17);
    GRID->Refresh();
}

bool Consola::eventFilter(QObject* objeto, QEvent* evento)
{
    // The space bar ticks the row under the cursor, as a click on its "Sel".
    if (objeto == GRID->vista() && evento->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(evento)->key() == Qt::Key_Space && GRID->Col() == 17 && GRID->Bookmark() >= 0) {
        Marcar(GRID->Bookmark());
        return true;
    }
    if (objeto == Text6 && evento->type() == QEvent::FocusOut)
        Text6_LostFocus();
    return Pantalla::eventFilter(objeto, evento);
}

// ------------------------------------------------------------------ saving and deleting

void Consola::ACTUALIZAR_Click()
{
    Modo_Grabar = 0;
    GRABAR_MOVIMIENTOS();
}

QString Consola::Sentencia_Fila(int i, const QString& Hoy, const QString& Ahora)
{
    const QString recibido = punto(Txt(i, 5).trimmed());
    const QString enviado = punto(Txt(i, 4).trimmed());
    const QString confirmacion = punto(Txt(i, 16).trimmed());
    const QString ganancia = punto(Txt(i, 20).trimmed());
    QString pago = QStringLiteral("0");
    if (Celdas(i, 8).Len() > 0)
        pago = Txt(i, 8);
    if (Celdas(i, 15).Len() > 0)
        pago = Txt(i, 15);
    pago = punto(pago.remove(QLatin1Char('.')));
    Celdas(i, 6) = Txt(i, 6).trimmed();

    return QStringLiteral(" UPDATE MOVIMIENTOS SET ") + asigna("recibido", recibido) + asigna("enviado", enviado) +
           asigna("C_CLIENTE", Txt(i, 2)) + asigna("obs", Txt(i, 22)) + asigna("C_PROVEEDOR", Txt(i, 6)) +
           asigna("pago", pago) + asigna("C_BANCO", Txt(i, 9)) + asigna("operadora", Txt(i, 13)) +
           asigna("REFERENCIA", Txt(i, 11)) + asigna("confirmacion", confirmacion) +
           asigna("tipo_operacion", Txt(i, 14)) + asigna("ganancia", ganancia) + Asignaciones_Ganancia(i, Hoy, Ahora) +
           QStringLiteral(" tipo_servicio =  '") + Txt(i, 18) + QStringLiteral("'") + QStringLiteral(" WHERE FECHA=  '") +
           Module1::Fecha_AMD(Txt(i, 0)) + QStringLiteral("'") + QStringLiteral(" and SECUENCIA = '") + Txt(i, 1) +
           QStringLiteral("'");
}

QString Consola::Asignaciones_G(int i)
{
    Celdas(i, 21) = Txt(i, 21).trimmed();
    const QString g1 = punto(Txt(i, 21));
    QString g2 = g1;
    QString g3 = QStringLiteral("0");
    // Services of 50 and up share the gain with the provider by its porgan.
    if (Txt(i, 6) != QLatin1String("0000") && Num(i, 18) > 49) {
        m.Porc_Gan = CInt(CDbl(m.Proveedores_T(CInt(Num(i, 6)), 3)));
        m.Porc_Cliente = int16_t(100 - m.Porc_Gan);
        g2 = punto(Format(Num(i, 21) * m.Porc_Cliente / 100, QStringLiteral("###0.00")));
        g3 = punto(Format(Num(i, 21) * m.Porc_Gan / 100, QStringLiteral("###0.00")));
    }
    return asigna("g1", g1) + asigna("g2", g2) + asigna("g3", g3);
}

QString Consola::Asignaciones_Ganancia(int i, const QString& Hoy, const QString& Ahora)
{
    QString s = Asignaciones_G(i);
    if (Modo_Grabar == 1)
        s += asigna("fecha_pago", Hoy) + asigna("hora_pago", Ahora) + asigna("dolar1", punto(Text8->text())) +
             asigna("dolar2", punto(Text9->text()));
    return s + asigna("bancozelle", Txt(i, 31));
}

void Consola::GRABAR_MOVIMIENTOS()
{
    // The client machine's clock, one moment for the whole batch.
    const QDateTime ahora = m.reloj();
    const QString Hoy = Module1::Fecha_AMD(ahora.date().toString(QStringLiteral("dd/MM/yyyy")));
    const QString Ahora = ahora.time().toString(QStringLiteral("hh:mm:ss"));

    Suma_Recibido = 0;
    m.SQL.clear();
    int filas = 0;
    for (int i : Celdas.Filas()) {
        if (!(Celdas(i, 12) == 1))
            continue;
        m.SQL += Sentencia_Fila(i, Hoy, Ahora);
        ++filas;
        if (Modo_Grabar == 1) {
            Suma_Recibido += CDbl(Txt(i, 5).trimmed());
            Prov_Pago = CInt(Num(i, 6));
        }
    }
    if (m.SQL.length() > 5) {
        try {
            m.Conexion.Execute(m.SQL, filas, Versiones_Cargadas);
        } catch (const FalloFilasCambiadas& f) {
            // Nothing of the batch was written: no gift for a payment run either.
            m.SQL.clear();
            Modo_Grabar = 0;
            Filas_Cambiadas(f);
            return;
        }
    }
    m.SQL.clear();
    if (Modo_Grabar == 1)
        Actualiza_Regalo();
    CONSULTAR();
    Modo_Grabar = 0;
}

void Consola::Filas_Cambiadas(const FalloFilasCambiadas& f)
{
    QString texto = QStringLiteral("Otro operador modificó o eliminó estas transacciones después de cargarlas en esta "
                                   "pantalla:\n");
    for (const auto& [fecha, secuencia] : f.claves())
        texto += fecha.mid(6, 2) + QLatin1Char('/') + fecha.mid(4, 2) + QLatin1Char('/') + fecha.left(4) +
                 QStringLiteral("  ") + QStringLiteral("%1").arg(secuencia, 4, 10, QLatin1Char('0')) + QLatin1Char('\n');
    texto += QStringLiteral("No se grabó ningún cambio. Se vuelven a cargar los datos actuales.");
    MsgBox(texto, Mensajes::vbExclamation);
    CONSULTAR();
}

void Consola::Actualiza_Regalo()
{
    // One provider pays the whole run: its commission on all that was received.
    Regalo_Row = redondea4(CDbl(m.Proveedores_T(Prov_Pago, 4)) * Suma_Recibido / 100);
    m.SQL = QStringLiteral(" UPDATE proveedor SET ") + QStringLiteral(" regalo = regalo +  '") + Str(Regalo_Row) +
            QStringLiteral("'*") + QStringLiteral(" ultregalo =  '") + Str(Regalo_Row) + QStringLiteral("'") +
            QStringLiteral(" WHERE C_proveedor =  '") + QString::number(Prov_Pago) + QStringLiteral("'");
    // The amounts' commas first; "*" stands for the comma of the assignments.
    m.SQL.replace(QLatin1Char(','), QLatin1Char('.'));
    m.SQL.replace(QLatin1Char('*'), QLatin1Char(','));
    m.Conexion.Execute(m.SQL);
}

void Consola::GRID_DblClick()
{
    const int fila = GRID->Bookmark();
    if (fila < 0)
        return;
    // The first click of a double click on "Sel" ticked the row: it is not a tick.
    if (GRID->Col() == 17)
        Marcar(fila);
    m.Rec_Fecha = Txt(fila, 0);
    m.K = Txt(fila, 1);
    const QString banco = Txt(fila, 9);
    // A paid or returned row is not deleted here.
    if (!banco.trimmed().isEmpty())
        return;
    const int respuesta =
        MsgBox(QStringLiteral("Atención : Quiere eliminar el Registro  ") + m.Rec_Fecha + QStringLiteral("  ") +
                   m.K.aTexto(),
               Mensajes::vbYesNo + Mensajes::vbCritical + 256, QStringLiteral("ConfirmaciÓn de eliminación  TRUMIN"));
    if (respuesta == Mensajes::vbYes)
        BORRAR_MOVIMIENTO();
}

void Consola::BORRAR_MOVIMIENTO()
{
    m.SQL = QStringLiteral("delete movimientos where ") + QStringLiteral(" fecha = '") + Module1::Fecha_AMD(m.Rec_Fecha) +
            QStringLiteral("'") + QStringLiteral(" and secuencia =  ") + m.K.aTexto();
    try {
        m.Conexion.Execute(m.SQL, 1, Versiones_Cargadas);
    } catch (const FalloFilasCambiadas& f) {
        Filas_Cambiadas(f);
        return;
    }
    CONSULTAR();
}

// ------------------------------------------------------------------ selection and payment

void Consola::Fijar_Sin_Marcas()
{
    // Every unpaid row takes the price, ticked or not; nothing is summed.
    for (int i : Celdas.Filas()) {
        if (Celdas(i, 9).Len() != 0)
            continue;
        Text4->setText(Text4->text().replace(QLatin1Char('.'), QLatin1Char(',')));
        Celdas(i, 16) = Text4->text().trimmed();
    }
    Reenlaza();
}

void Consola::FIJAR_Click()
{
    Suma_Sel = 0;
    for (int i : Celdas.Filas()) {
        if (!(Celdas(i, 17) == -1) || Celdas(i, 9).Len() != 0)
            continue;
        Text4->setText(Text4->text().replace(QLatin1Char('.'), QLatin1Char(',')));
        Celdas(i, 16) = Text4->text().trimmed();
        const double v = Num(i, 18) < 50 ? Num(i, 5) * Num(i, 16) : Num(i, 4) * Num(i, 16);
        Celdas(i, 8) = Format(Int(v), QStringLiteral("###,##0.00"));
        // The sum takes the product before the cut.
        Suma_Sel = CLng(Suma_Sel + v);
    }
    Text5->setText(Format(double(Suma_Sel), QStringLiteral("###,##0")));
    Reenlaza();
}

void Consola::Quitar_Marcas()
{
    for (int i : Celdas.Filas())
        Celdas(i, 17) = 0;
}

void Consola::Rechaza_Seleccion(const QString& texto)
{
    MsgBox(texto, Mensajes::vbCritical);
    Quitar_Marcas();
    Reenlaza();
}

int Consola::Recorre_Marcadas(const std::function<bool(int)>& marcada)
{
    int j = 0;
    m.J = j;
    if (Celdas.Vacia()) {
        m.I = -1;
        MsgBox(QStringLiteral("Error : No hay información para procesar"), Mensajes::vbCritical);
        return 0;
    }
    for (int i : Celdas.Filas()) {
        m.I = i;
        if (Celdas(i, 17) == -1) {
            if (!marcada(i))
                return 0;
            m.J = ++j;
        }
    }
    if (j == 0)
        MsgBox(QStringLiteral("Error : No selecciono información"), Mensajes::vbCritical);
    return j;
}

void Consola::Sumarizar_Click()
{
    m.Sel_Cuenta = 0;
    m.Sel_Total = 0;
    Suma_Sel = 0;
    const int j = Recorre_Marcadas([&](int i) {
        if (Celdas(i, 8) == 0) {
            // A paid row among the ticked ones: nothing is paid, every tick goes.
            Rechaza_Seleccion(QStringLiteral("Error : conflicto en la selección. Hay movimientos pagados"));
            return false;
        }
        m.Sel_Total += Num(i, 8);
        return true;
    });
    if (j == 0)
        return;
    m.Sel_Cuenta = j;
    m.Ref_Aceptado = false;
    Dialogo::Mostrar(m, this);
    if (m.Ref_Aceptado) {
        APLICAR_PAGO();
        Modo_Grabar = 1;
        GRABAR_MOVIMIENTOS();
    }
    Quitar_Marcas();
    Text5->setText(QStringLiteral("0"));
    Reenlaza();
}

void Consola::APLICAR_PAGO()
{
    for (int i : Celdas.Filas()) {
        if (!(Celdas(i, 17) == -1))
            continue;
        m.I = i;
        Celdas(i, 6) = m.Ref_Cod_Proveedor;
        Celdas(i, 7) = m.Ref_Nombre_Proveedor;
        Celdas(i, 9) = m.Ref_Banco;
        Celdas(i, 10) = m.Ref_Nombre_Banco;
        Celdas(i, 11) = m.Ref_Referencia;
        // The estimate becomes the payment.
        Celdas(i, 15) = Celdas(i, 8);
        Celdas(i, 17) = 0;
        Celdas(i, 14) = m.Ref_Opcion;
        Ganancia_Del_Pago(i);
    }
    Reenlaza();
}

void Consola::Ganancia_Del_Pago(int i)
{
    Monto_Texto = Txt(i, 8).remove(QLatin1Char('.'));
    Monto_Calc = CDbl(Monto_Texto);
    Tipo_Serv = CInt(Num(i, 18));
    Celdas(i, 8) = 0;
    CALCULA_PORCENTAJE(Monto_Calc, Tipo_Serv);
    Celdas(i, 20) = Format(double(Porcentaje), QStringLiteral("##0.00"));
    // Only the batch payment adds this half cent to the percentage.
    Celdas(i, 21) = Format(Num(i, 5) * (double(Porcentaje) + 0.005) / 100, QStringLiteral("##0.00"));
}

void Consola::Check1_Click()
{
    if (!Check1->isChecked())
        return;
    principal.Mostrar(QStringLiteral("CONCEPTOS"));
    Check1->setChecked(false);
}

// ------------------------------------------------------------------ receipts

void Consola::Aviso(const QString& texto)
{
    Text7->setText(texto);
    Text7->setVisible(true);
    repaint();
    m.Espera(2);
    Text7->setVisible(false);
    repaint();
}

void Consola::Text6_Enter()
{
    if (Text6->text().isEmpty())
        return;
    m.Rec_Concepto = m.Nombre_Concepto(CInt(Fix(CDbl(Text6->text()))));
    // An unknown code comes back as itself: then there is no such concept.
    if (Text6->text() != m.Rec_Concepto) {
        Aviso(m.Rec_Concepto);
    } else {
        MsgBox(QStringLiteral("Error: Concepto no Existe"), Mensajes::vbCritical);
        Text6->clear();
        Text6->setFocus();
    }
}

void Consola::Text6_LostFocus()
{
    if (!Text6->text().isEmpty())
        recibo.Cod_Concepto = CInt(Fix(CDbl(Text6->text())));
}

void Consola::RECIBO_PDF_Click()
{
    if (!recibo.Impresora_Es(QStringLiteral("*PDF*")))
        return;
    recibo.Es_PDF = true;
    PREPARAR_RECIBO();
}

void Consola::RECIBO_XPS_Click()
{
    if (!recibo.Impresora_Es(QStringLiteral("*XPS*")))
        return;
    recibo.Es_PDF = false;
    PREPARAR_RECIBO();
}

void Consola::PREPARAR_RECIBO()
{
    m.Sel_Cuenta = 0;
    int fila = -1;
    const int j = Recorre_Marcadas([&](int i) {
        if (Num(i, 8) > 0) {
            // An estimate still standing: the row is not paid.
            Rechaza_Seleccion(QStringLiteral("Error : La Transacción no esta pagada"));
            return false;
        }
        fila = i;
        return true;
    });
    if (j == 0)
        return;
    if (j > 1) {
        Rechaza_Seleccion(QStringLiteral("Error : seleccione una sola Transacción"));
        return;
    }
    if (Text6->text().isEmpty()) {
        MsgBox(QStringLiteral("Error : Indique Código del Concepto de Pago"), Mensajes::vbCritical);
        Text6->setFocus();
        return;
    }
    Quitar_Marcas();
    m.Rec_Fecha = Module1::Fecha_AMD(Txt(fila, 0));
    m.Rec_Secuencia = CInt(Num(fila, 1));
    m.Rec_Operadora = CInt(Num(fila, 13));
    m.Nom_Cliente = Txt(fila, 3);
    recibo.Rec_Monto = Txt(fila, 5);
    Text6->clear();
    recibo.EMITIR_RECIBO();
    Reenlaza();
}

void Consola::COPIAR_Click()
{
    recibo.COPIAR();
    Aviso(QStringLiteral("Recibo Copiado......"));
}
