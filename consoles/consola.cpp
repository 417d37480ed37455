#include "consola.h"
#include "consola_comun.h"
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
using namespace consola;

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
    auto marco = [this](const QString& titulo, int x, int w, const std::vector<const char*>& opciones, QRadioButton** botones,
                        const QString& arreglo) {
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

    marco(QStringLiteral("Seleccionar"), 8, 280, {"Todos", "Pagados", "No Pagados"}, Option1.data(), QStringLiteral("Option1"));
    marco(QStringLiteral("Operadora"), 296, 250, {"Todas", "Ramil", "Noelina"}, Option2.data(), QStringLiteral("Option2"));
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
    // An export proposes the date range of the query: "consulta-2026-11-24",
    // "consulta-2026-11-01-a-2026-11-24".
    GRID->setExportacion([this] {
        const QString desde = Fecha1->date().toString(QStringLiteral("yyyy-MM-dd"));
        const QString hasta = Fecha2->date().toString(QStringLiteral("yyyy-MM-dd"));
        return QStringLiteral("consulta-") + (desde == hasta ? desde : desde + QStringLiteral("-a-") + hasta);
    });

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
        if (GRID->Col() == colSel && GRID->Bookmark() >= 0)
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
    Option1[selTodos]->setChecked(true); // queries through its click
    Option2[opTodas]->setChecked(true);  // does not: the screen is not loaded yet
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
                        servicio[2].leftJustified(12, QLatin1Char(' '), true) + QStringLiteral(" (") + StrSng(m.Monto_T(i)) +
                        QStringLiteral(")"));
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
        {"Fecha", 1100, 'C', true, 0},    {"Sec.", 600, 'C', true, 0},     {"C-C", 600, 'C', true, -1},
        {"Cliente", 2200, 'G', false, 0}, {"Envio", 1150, 'R', false, -1}, {"Recibido", 1150, 'R', false, -1},
        {"C-P", 600, 'C', false, -1},     {"Proveedor", 900, 0, false, 0}, {"Estimado", 1150, 'R', true, 0},
        {"C-B", 600, 0, false, -1},       {"Banco", 100, 0, false, 0},     {"Referencia", 600, 0, false, -1},
        {"M", 1, 0, false, -1},           {"Op", 400, 'C', false, -1},     {"T", 200, 'C', false, -1},
        {"Pagado", 1300, 'R', false, 1},  {"Factor ", 900, 'R', true, 1},  {"Sel", 400, 'C', false, -1},
        {"T-S", 500, 'C', false, -1},     {"Servicio", 1000, 0, false, 0}, {" %", 700, 'R', true, 0},
        {" G2", 950, 'R', true, -1},      {"Nota", 800, 0, false, -1},     {"G-1", 900, 'R', true, 0},
        {"G-2", 900, 'R', true, 0},       {"G-3", 900, 'R', false, -1},    {"Fecha_P", 1200, 'C', true, -1},
        {"Hora_P", 1200, 'C', true, -1},  {"Regalo", 1200, 'G', true, -1}, {"Dolar 1", 900, 'C', true, -1},
        {"Dolar 2", 900, 'C', true, -1},  {"Ze", 300, 'C', false, -1},
    };
}

std::vector<std::pair<int, int>> Consola::Movidas() const
{
    // The second of each pair is a place on the screen, counted as the
    // columns stand after the moves before it.
    return {{colOperadora, 1}, {colFactor, 10}, {colMarca, 16}, {colCodServicio, 16},
            {colServicio, 17}, {colNota, 5},    {colG3, 23},    {colBancoZelle, 18}};
}

std::vector<int> Consola::Ocultas() const { return {colG2Oculta, colMarca}; }

std::vector<std::pair<int, QString>> Consola::Montos_Mayores()
{
    // Dollars to 99.999,99, bolivars to 99.999.999,99, rates to 9.999,9999,
    // gains to 9.999,99: the largest the business writes in each column.
    return {{colEnvio, QStringLiteral("99.999,99")},
            {colRecibido, QStringLiteral("99.999,99")},
            {colEstimado, QStringLiteral("99.999.999,99")},
            {colPagado, QStringLiteral("99.999.999,99")},
            {colFactor, QStringLiteral("9.999,9999")},
            {colG2, QStringLiteral("9.999,99")},
            {colG1, QStringLiteral("9.999,99")},
            {colG2Oculta, QStringLiteral("9.999,99")}};
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
    if (ultima >= colSel)
        GRID->Columns(colSel).setLocked(true);
    // Texts saved as they are typed take no more than their columns hold:
    // bank code, reference, operator and note.
    for (const auto& [col, largo] : {std::pair {colCodBanco, 10}, {colReferencia, 50}, {colOperadora, 5}, {colNota, 500}})
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
