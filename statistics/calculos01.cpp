#include "calculos01.h"
#include "controles.h"
#include "formato.h"
#include "module1.h"

#include <QComboBox>
#include <QDate>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

CALCULOS01::CALCULOS01(Module1& modulo, MDIForm1& p, const QString& nombre) : Pantalla(modulo, p, nombre)
{
    setWindowTitle(nombre);

    auto texto = [this](int i, const QString& fijo, int x, int y, int w) {
        auto* t = new QLineEdit(fijo, this);
        t->setGeometry(x, y, w, 24);
        Controles::Nombrar(t, QStringLiteral("Text1"), i, fijo);
        Controles::SeleccionarAlEnfocar(t);
        if (!fijo.isEmpty()) {
            t->setReadOnly(true);
            t->setFrame(false);
        }
        Text1[size_t(i)] = t;
    };
    auto marco = [this](const QString& titulo, int x, int w, std::initializer_list<const char*> opciones, QRadioButton** botones,
                        const QString& arreglo) {
        auto* g = new QGroupBox(titulo, this);
        g->setGeometry(x, 0, w, 48);
        int bx = 8, i = 0;
        for (const char* o : opciones) {
            const QString caption = QString::fromUtf8(o);
            auto* b = new QRadioButton(caption, g);
            const int ancho = b->sizeHint().width() + 2;
            b->setGeometry(bx, 21, ancho, 22);
            bx += ancho + 4;
            Controles::Nombrar(b, arreglo, i, caption);
            botones[i++] = b;
        }
        return g;
    };

    // ---- period, figures of the month and buttons, top left
    texto(rotAno, QStringLiteral("Año="), 8, 4, 40);
    texto(txtAno, QString(), 48, 4, 52);
    texto(rotMes, QStringLiteral("Mes ="), 108, 4, 44);
    texto(txtMes, QString(), 152, 4, 32);
    // the month's average and balance, on the line of the tabs
    texto(rotPromedio, QStringLiteral("Promedio Diario ="), 220, 52, 122);
    texto(txtPromedio, QString(), 342, 52, 78);
    texto(rotBalance, QStringLiteral("Balance="), 436, 52, 62);
    texto(txtBalance, QString(), 498, 52, 78);
    for (int i : {txtAno, txtMes, txtPromedio, txtBalance})
        Text1[size_t(i)]->setAlignment(Qt::AlignRight);
    Text1[txtPromedio]->setReadOnly(true);
    Text1[txtBalance]->setReadOnly(true);
    CARGA_DATOS = Controles::Boton(this, QStringLiteral("CARGA_DATOS"), QStringLiteral("Carga Info"), 192, 2, 100, 28);

    // ---- filters
    Frame2 = marco(QStringLiteral("Operadora"), 364, 230, {"Todas", "Ramil", "Noelina"}, Option2.data(),
                   QStringLiteral("Option2"));
    Frame3 = marco(QStringLiteral("Tipo de Servicio"), 602, 310, {"Todos", "Trum", "Zelle", "Zinli", "Amaz"}, Option3.data(),
                   QStringLiteral("Option3"));
    Label1 = new QLabel(QStringLiteral("Servicios="), this);
    Label1->setGeometry(922, 6, 72, 22);
    Combo1 = new QComboBox(this);
    Combo1->setGeometry(994, 4, 250, 26);
    Combo1->setFont(QFont(QStringLiteral("Courier New"), 9));
    Controles::Nombrar(Combo1, QStringLiteral("Combo1"), QStringLiteral("Servicios"));
    SALIR = Controles::Boton(this, QStringLiteral("SALIR"), QStringLiteral("Salir"), 1252, 2, 72, 28);

    // ---- the tab strip: every grid on its first tab, the two others empty
    SSTab1 = new QTabWidget(this);
    SSTab1->setGeometry(4, 50, 1322, 600);
    Controles::Nombrar(SSTab1, QStringLiteral("SSTab1"), QStringLiteral("SSTab1"));
    auto* hoja = new QWidget;
    SSTab1->addTab(hoja, QStringLiteral("Tab 0"));
    SSTab1->addTab(new QWidget, QStringLiteral("Tab 1"));
    SSTab1->addTab(new QWidget, QStringLiteral("Tab 2"));
    auto rejilla = [hoja](const QString& nombreGrid, int x, int y, int w, int h) {
        auto* g = new Rejilla(nombreGrid, hoja);
        g->setGeometry(x, y, w, h);
        return g;
    };
    auto linea = [hoja](const QString& nombreLinea, int x) {
        auto* l = new QFrame(hoja);
        l->setFrameShape(QFrame::VLine);
        l->setFrameShadow(QFrame::Sunken);
        l->setGeometry(x, 2, 6, 564);
        l->setObjectName(nombreLinea);
        return l;
    };
    GRID = rejilla(QStringLiteral("GRID"), 2, 2, 424, 564);
    Line1 = linea(QStringLiteral("Line1"), 428);
    GRID2 = rejilla(QStringLiteral("GRID2"), 436, 2, 476, 564);
    Line2 = linea(QStringLiteral("Line2"), 914);
    GRID1 = rejilla(QStringLiteral("GRID1"), 922, 2, 392, 184);
    GRID4 = rejilla(QStringLiteral("GRID4"), 922, 192, 392, 184);
    GRID5 = rejilla(QStringLiteral("GRID5"), 922, 382, 392, 184);
    for (Rejilla* g : {GRID, GRID1, GRID2, GRID4, GRID5}) {
        g->setAllowUpdate(false);
        g->setRowHeight(260);
        g->setColumnFooters(true);
    }

    // ---- events
    for (int i = 0; i < int(Option2.size()); ++i)
        connect(Option2[size_t(i)], &QRadioButton::toggled, this, [this, i](bool puesto) {
            if (puesto)
                Option2_Click(i);
        });
    for (int i = 0; i < int(Option3.size()); ++i)
        connect(Option3[size_t(i)], &QRadioButton::toggled, this, [this, i](bool puesto) {
            if (puesto)
                Option3_Click(i);
        });
    connect(Combo1, &QComboBox::activated, this, [this] { Combo1_Click(); });
    connect(CARGA_DATOS, &QPushButton::clicked, this, [this] { Carga_Estadistica(); });
    connect(SALIR, &QPushButton::clicked, this, [this] { Unload(); });
    connect(GRID, &Rejilla::HeadClick, this, [this](int col) { GRID_HeadClick(col); });
    connect(GRID2, &Rejilla::HeadClick, this, [this](int col) { GRID2_HeadClick(col); });
    Prepara_Herramientas();
}

void CALCULOS01::Form_Load()
{
    Colocar(10, 101, 20050, 10200);
    Cargado = false;
}

void CALCULOS01::Form_Activate()
{
    if (Cargado)
        return;
    m.L = 0;
    const QDate hoy = QDate::currentDate(); // the machine's date, not the server's
    Text1[txtAno]->setText(QString::number(hoy.year()));
    Text1[txtMes]->setText(Format(double(hoy.month()), QStringLiteral("00")));
    Option2[opTodas]->setChecked(true); // its click makes the first load
    Option3[srvTrum]->setChecked(true); // its click is not heard yet: the figures stay those of every service
    Llena_Combo();
    m.L = 0;
    Combo1->setCurrentIndex(0);
    Cargado = true;
}

void CALCULOS01::Llena_Combo()
{
    Combo1->clear();
    Combo1->addItem(QStringLiteral("00 - TODOS"));
    for (int i = 1; i <= m.N_Servicios; ++i)
        if (!m.Servicios_T(i)[1].isEmpty())
            Combo1->addItem(Format(m.Servicios_T(i)[1], QStringLiteral("00")) + QStringLiteral(" - ") + m.Servicios_T(i)[2]);
    Combo1->addItem(QStringLiteral("98 - TODOS SW_CALCULO=1"));
    Combo1->addItem(QStringLiteral("99 - TODOS SW_CALCULO=2"));
}

// ------------------------------------------------------------------ filters

void CALCULOS01::Option2_Click(int indice)
{
    m.K = indice;
    Carga_Estadistica();
}

void CALCULOS01::Option3_Click(int indice)
{
    if (!Cargado)
        return;
    m.L = indice;
    Servicio_Elegido = Option3[size_t(indice)]->text();
    Carga_Estadistica();
}

void CALCULOS01::Combo1_Click()
{
    if (!Cargado)
        return;
    m.L = Combo1->currentText().left(2);
    const QString texto = Combo1->currentText();
    Servicio_Elegido = texto.startsWith(QLatin1String("00")) ? QStringLiteral("Todos") : texto.mid(5).trimmed();
    Carga_Estadistica();
}

// ------------------------------------------------------------------ sorts

void CALCULOS01::Ordena(Rejilla* grid, ::Celdas& celdas, int col, Celdas::Clave clave, Celdas::Orden orden)
{
    if (celdas.filas() > 0)
        celdas.QuickSort(celdas.LowerBound(1), celdas.UpperBound(1), col, clave, orden);
    grid->Refresh();
}

void CALCULOS01::GRID_HeadClick(int col)
{
    if (!Ordena_GRID())
        return;
    // Always from the largest down: a second click gives the same order.
    Ordena(GRID, Celdas, col, col == colSemana ? Celdas::Clave::Texto : Celdas::Clave::Numero, Celdas::Orden::Descendente);
}

void CALCULOS01::GRID2_HeadClick(int col)
{
    if (!Ordena_GRID2())
        return;
    if (col == grpNombre)
        Ordena(GRID2, Celdas2, col, Celdas::Clave::Texto, Celdas::Orden::Ascendente);
    else
        Ordena(GRID2, Celdas2, col, Celdas::Clave::Numero, Celdas::Orden::Descendente);
}
