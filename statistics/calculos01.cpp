#include "calculos01.h"
#include "controles.h"
#include "fallo.h"
#include "formato.h"
#include "module1.h"
#include "numeros.h"

#include <QComboBox>
#include <QDate>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

using Numeros::CInt;

namespace {

// The date of a calendar row, as the text "yyyy-m-dd" the screen builds from
// its boxes; an invalid one (February 30, a year or month that is no number,
// a year of fewer than four digits) gives an invalid date. The books' years
// have four digits: a shorter one is a slip of the hand, and "202" with month
// "02" would otherwise lay out February of the year 202 while the server reads
// the text 20202 as February 2020, whose 29th day has no row.
QDate fechaDeTexto(const QString& texto)
{
    const QStringList partes = texto.split(QLatin1Char('-'));
    if (partes.size() != 3)
        return {};
    int numeros[3];
    for (int i = 0; i < 3; ++i) {
        bool bien = false;
        numeros[i] = partes[i].trimmed().toInt(&bien);
        if (!bien)
            return {};
    }
    if (numeros[0] < 1000 || numeros[0] > 9999)
        return {};
    return QDate(numeros[0], numeros[1], numeros[2]);
}

} // namespace

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
    auto marco = [this](const QString& titulo, int x, int w, std::initializer_list<const char*> opciones,
                        QRadioButton** botones, const QString& arreglo) {
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
    texto(0, QStringLiteral("Año="), 8, 4, 40);
    texto(1, QString(), 48, 4, 52);
    texto(2, QStringLiteral("Mes ="), 108, 4, 44);
    texto(3, QString(), 152, 4, 32);
    // the month's average and balance, on the line of the tabs
    texto(4, QStringLiteral("Promedio Diario ="), 220, 52, 122);
    texto(5, QString(), 342, 52, 78);
    texto(7, QStringLiteral("Balance="), 436, 52, 62);
    texto(6, QString(), 498, 52, 78);
    for (int i : {1, 3, 5, 6})
        Text1[size_t(i)]->setAlignment(Qt::AlignRight);
    Text1[5]->setReadOnly(true);
    Text1[6]->setReadOnly(true);
    CARGA_DATOS = Controles::Boton(this, QStringLiteral("CARGA_DATOS"), QStringLiteral("Carga Info"), 192, 2, 100, 28);

    // ---- filters
    Frame2 = marco(QStringLiteral("Operadora"), 364, 230, {"Todas", "Ramil", "Noelina"}, Option2.data(),
                   QStringLiteral("Option2"));
    Frame3 = marco(QStringLiteral("Tipo de Servicio"), 602, 310, {"Todos", "Trum", "Zelle", "Zinli", "Amaz"},
                   Option3.data(), QStringLiteral("Option3"));
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
    Text1[1]->setText(QString::number(hoy.year()));
    Text1[3]->setText(Format(double(hoy.month()), QStringLiteral("00")));
    Option2[0]->setChecked(true); // its click makes the first load
    Option3[1]->setChecked(true); // its click is not heard yet: the figures stay those of every service
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
    Carga_Estadistica();
}

void CALCULOS01::Combo1_Click()
{
    if (!Cargado)
        return;
    m.L = Combo1->currentText().left(2);
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
    Ordena(GRID, Celdas, col, col == 1 ? Celdas::Clave::Texto : Celdas::Clave::Numero, Celdas::Orden::Descendente);
}

void CALCULOS01::GRID2_HeadClick(int col)
{
    if (!Ordena_GRID2())
        return;
    if (col == 1)
        Ordena(GRID2, Celdas2, col, Celdas::Clave::Texto, Celdas::Orden::Ascendente);
    else
        Ordena(GRID2, Celdas2, col, Celdas::Clave::Numero, Celdas::Orden::Descendente);
}

// ------------------------------------------------------------------ layout

void CALCULOS01::Disponer(Rejilla* grid, ::Celdas& celdas, std::initializer_list<DefColumna> columnas)
{
    int c = 0;
    for (const DefColumna& d : columnas)
        grid->Columns(c++).setCaption(QString::fromUtf8(d.titulo)).setWidth(d.ancho).setAlignment(d.alineacion)
            .setVisible(true);
    celdas.ReDim(-1, -1, 0, c - 1);
    grid->Array(celdas);
}

void CALCULOS01::Prepara_Grid()
{
    using enum Alineacion;
    Disponer(GRID, Celdas, {{"Dia", 500, Centro}, {"", 500, Centro}, {"Recibido", 1100, Derecha},
                            {"Directos", 1100, Derecha}, {"Tot-M", 800, Derecha}, {"%", 700, Derecha},
                            {"Tot-G", 1100, Derecha}});
    // The calendar: the rows of the month's days, until the first day that
    // the month does not have.
    Celdas.ReDim(-1, -1, 0, 6);
    for (int i = 0; i <= 30; ++i) {
        Fecha_Fila = Text1[1]->text() + QLatin1Char('-') + Text1[3]->text() + QLatin1Char('-') +
                     Format(double(i + 1), QStringLiteral("00"));
        const QDate fecha = fechaDeTexto(Fecha_Fila);
        if (!fecha.isValid())
            break;
        const int semana = fecha.dayOfWeek() % 7 + 1; // Sunday is 1
        m.J = semana;
        Celdas.ReDim(0, i, 0, 6);
        Celdas(i, 0) = Format(double(i + 1), QStringLiteral("00"));
        Celdas(i, 1) = Module1::Nombre_Dia(int16_t(semana));
    }
    Blanquea_Pies();
    GRID->Columns(4).setFooterText(QString());
    GRID->Array(Celdas);
    Prepara_Grid1();
}

void CALCULOS01::Blanquea_Pies()
{
    for (Rejilla* g : {GRID, GRID1, GRID2, GRID4})
        for (int c = 0; c <= 3; ++c)
            g->Columns(c).setFooterText(QString());
}

void CALCULOS01::Prepara_Grid1()
{
    using enum Alineacion;
    Disponer(GRID1, Celdas1, {{"C-P", 700, Centro}, {" Proveedor", 1500, General}, {"Recibido", 1100, Derecha},
                              {"  %", 700, Derecha}});
    Prepara_Grid2();
}

void CALCULOS01::Prepara_Grid2()
{
    using enum Alineacion;
    if (Con_Cuantos())
        Disponer(GRID2, Celdas2, {{"C-C", 700, Centro}, {"Nombre Cliente", 3000, General},
                                  {"Recibido ", 1200, Derecha}, {"  %", 700, Derecha}, {"Tot-M", 900, Derecha}});
    else
        Disponer(GRID2, Celdas2, {{"C-C", 700, Centro}, {"Nombre Cliente", 3000, General},
                                  {"Recibido ", 1200, Derecha}, {"  %", 700, Derecha}});
    Prepara_Grid4();
}

void CALCULOS01::Prepara_Grid4()
{
    using enum Alineacion;
    Disponer(GRID4, Celdas4, {{"C-B", 700, Centro}, {"Nombre Banco", 1500, General}, {"Recibido", 1100, Derecha},
                              {"  %", 800, Derecha}});
    Prepara_Grid5();
}

void CALCULOS01::Prepara_Grid5()
{
    using enum Alineacion;
    Disponer(GRID5, Celdas5, {{"C-S", 700, Centro}, {"Servicio", 1500, General}, {"Recibido", 1100, Derecha},
                              {"  %", 800, Derecha}});
    Retoca_Columnas();
}

// ------------------------------------------------------------------ the load

void CALCULOS01::Ejecuta(std::initializer_list<Valor> valores)
{
    m.Cierra_Rs();
    m.Prepara_Comando(Procedimiento());
    int n = 1;
    for (const Valor& v : valores)
        m.Comando.Parameters(n++) = v;
    m.Ejecuta_Comando();
}

double CALCULOS01::Divide(double a, double b)
{
    if (b == 0)
        throw FalloEjecucion::divisionPorCero();
    return a / b;
}

double CALCULOS01::Porcion(double suma, double total) { return suma > 0 ? Divide(suma * 100, total) : 0; }

void CALCULOS01::Escribe_Dia(int fila)
{
    const Recordset& rs = *m.Rs;
    const double suma = rs.Fields(QStringLiteral("Suma")).aDouble();
    const double totM = rs.Fields(QStringLiteral("Tot_m")).aDouble();
    const double porcen = rs.Fields(QStringLiteral("Porcen")).aDouble();
    const double totgan = rs.Fields(QStringLiteral("Totgan")).aDouble();
    Celdas(fila, 2) = Format(suma, QStringLiteral("###,###"));
    Celdas(fila, 4) = Format(totM, QStringLiteral("###,###"));
    Celdas(fila, 5) = Format(porcen, QStringLiteral("##0.00"));
    Celdas(fila, 6) = Format(totgan, Formato_Gan);
    Total_Recibido += suma;
    Total_Tot_M += totM;
    Total_Gan += totgan;
}

void CALCULOS01::Pies_Del_Mes()
{
    GRID->Columns(2).setFooterText(Format(Total_Recibido, QStringLiteral("###,##0")));
    GRID->Columns(4).setFooterText(Format(Total_Tot_M, QStringLiteral("###,##0")));
    GRID->Columns(5).setFooterText(Format(Porc_Gan, Formato_Pie_Porc));
    GRID->Columns(6).setFooterText(Format(Total_Gan, QStringLiteral("###,##0")));
}

void CALCULOS01::Lee_Grupo(Rejilla* grid, ::Celdas& celdas, const QString& campo, const QString& formatoCodigo,
                           const std::function<QString(const Valor&)>& nombre, double total,
                           const QString& formatoPorc, bool conteo, bool cuantos)
{
    Recordset& rs = *m.Rs;
    const int ultima = cuantos ? 4 : 3;
    Suma_Grid = 0;
    int i = -1;
    for (; !rs.Eof(); rs.MoveNext()) {
        ++i;
        m.I = i;
        celdas.ReDim(0, i, 0, ultima);
        const Valor& codigo = rs.Fields(campo);
        const double suma = rs.Fields(QStringLiteral("Suma")).aDouble();
        celdas(i, 0) = Format(codigo, formatoCodigo);
        celdas(i, 1) = nombre(codigo);
        celdas(i, 2) = Format(suma, QStringLiteral("###,###"));
        if (cuantos) {
            const double n = rs.Fields(QStringLiteral("cuantos")).aDouble();
            celdas(i, 4) = Format(n, QStringLiteral("###,###"));
            Total_Cuantos += n;
        }
        celdas(i, 3) = Format(Porcion(suma, total), formatoPorc);
        Suma_Grid += suma;
    }
    if (conteo)
        grid->Columns(0).setFooterText(Format(double(i + 1), QStringLiteral("###,##0")));
    grid->Columns(2).setFooterText(Format(Suma_Grid, QStringLiteral("###,##0")));
    if (cuantos)
        grid->Columns(4).setFooterText(Format(Total_Cuantos, QStringLiteral("###,##0")));
}

void CALCULOS01::Lee_Proveedores(double total)
{
    m.Rs->NextRecordset();
    Lee_Grupo(GRID1, Celdas1, QStringLiteral("prov"), QStringLiteral("0000"),
              [this](const Valor& v) { return m.Nombre_Proveedor(CInt(v.aDouble())); }, total,
              QStringLiteral("###,##0.00"), true, false);
}

QHash<int, QString> CALCULOS01::Indice_Clientes(bool& completo) const
{
    // The first row of a code wins, as in Nombre_Cliente. A code text that is
    // no number ends the index: the codes not found before it go to
    // Nombre_Cliente, which meets that row as it always has.
    QHash<int, QString> indice;
    completo = false;
    for (int j = 1; j <= m.N_Clientes; ++j) {
        const QString& codigo = m.Clientes_T(j, 1);
        if (!codigo.trimmed().isEmpty() && !Numeros::EsNumerico(codigo))
            return indice;
        const int clave = int(Numeros::Int(Numeros::CDbl(codigo)));
        if (!indice.contains(clave))
            indice.insert(clave, m.Clientes_T(j, 2));
    }
    completo = true;
    return indice;
}

void CALCULOS01::Lee_Clientes(double total)
{
    m.Rs->NextRecordset();
    Total_Cuantos = 0;
    bool completo = false;
    const QHash<int, QString> nombres = Indice_Clientes(completo);
    Lee_Grupo(
        GRID2, Celdas2, QStringLiteral("Cliente"), QStringLiteral("0000"),
        [this, &nombres, completo](const Valor& v) {
            const int16_t codigo = CInt(v.aDouble());
            const auto nombre = nombres.constFind(codigo);
            if (nombre != nombres.constEnd())
                return nombre.value();
            // An unknown code shows as the number, as Nombre_Cliente gives
            // it after searching the whole cache in vain.
            return completo ? QString::number(codigo) : m.Nombre_Cliente(codigo);
        },
        total, QStringLiteral("###,##0.00"), true, Con_Cuantos());
}

void CALCULOS01::Lee_Bancos(double total)
{
    m.Rs->NextRecordset();
    Total_Cuantos = 0;
    Lee_Grupo(GRID4, Celdas4, QStringLiteral("Banco"), QStringLiteral("0000"),
              [this](const Valor& v) { return m.Nombre_Banco(v.aTexto()); }, total, QStringLiteral("###,##0.00"),
              true, false);
}

void CALCULOS01::Lee_Servicios(double total)
{
    m.Rs->NextRecordset();
    // A code beyond the services' table stops the load, as any subscript out of range.
    Lee_Grupo(GRID5, Celdas5, QStringLiteral("servi"), QStringLiteral("00"),
              [this](const Valor& v) { return m.Servicios_T(CInt(v.aDouble()))[2]; }, total, Formato_Porc_Servicio,
              false, false);
}

void CALCULOS01::Termina()
{
    m.Cierra_Rs();
    for (auto [grid, celdas] : {std::pair{GRID, &Celdas}, {GRID1, &Celdas1}, {GRID2, &Celdas2}, {GRID4, &Celdas4},
                                {GRID5, &Celdas5}})
        grid->Array(*celdas);
    if (Con_Reloj())
        Reloj_De_Arena(false);
}

void CALCULOS01::Empieza()
{
    if (Con_Reloj())
        Reloj_De_Arena(true);
    Suma_Grid = 0;
    Total_Recibido = 0;
    Total_Tot_M = 0;
    Porc_Gan = 0;
    Total_Gan = 0;
    Text1[6]->clear();
}

void CALCULOS01::Carga_Estadistica()
{
    Empieza();
    Prepara_Grid();
    // Boxes that name no month lay out no calendar, and the figures of
    // whatever the joined text might match would have no day to go to.
    if (Celdas.filas() == 0) {
        Termina();
        return;
    }

    Ejecuta({Text1[1]->text() + Text1[3]->text(), m.K, m.L});
    Recordset& rs = *m.Rs;
    if (Cuenta_Filas() && rs.RecordCount() == 0) {
        Termina();
        return;
    }

    // Set 1: the days with data, each on its calendar row.
    int dias = 0;
    for (; !rs.Eof(); rs.MoveNext()) {
        ++dias;
        const int dia = CInt(rs.Fields(QStringLiteral("dia")).aDouble());
        m.I = dia;
        Escribe_Dia(dia - 1);
    }
    m.J = dias;
    if (dias == 0) {
        m.Cierra_Rs();
        return;
    }
    Porc_Gan = 100 * Divide(Total_Gan, Total_Recibido);
    GRID->Columns(1).setFooterText(Format(double(dias), QStringLiteral("###,##0")));
    Pies_Del_Mes();
    // The average is over the days that have movements, not the calendar's.
    Text1[5]->setText(Format(Divide(Total_Recibido, dias), QStringLiteral("###,##0")));
    GRID->Array(Celdas);

    Lee_Proveedores(Total_Recibido);
    Lee_Clientes(Total_Recibido);
    Lee_Bancos(Total_Recibido);

    // Set 5: the direct transfers, into column 3 of their days.
    rs.NextRecordset();
    Suma_Grid = 0;
    int directos = 0;
    m.J = 0;
    for (; !rs.Eof(); rs.MoveNext()) {
        m.J = ++directos;
        const int dia = CInt(rs.Fields(QStringLiteral("dia")).aDouble());
        m.I = dia;
        const double suma = rs.Fields(QStringLiteral("Suma")).aDouble();
        Celdas(dia - 1, 3) = Format(suma, QStringLiteral("###,###"));
        Suma_Grid += suma;
    }
    GRID->Columns(3).setFooterText(Format(Suma_Grid, QStringLiteral("###,##0")));
    // What was received and did not come as a direct transfer.
    Text1[6]->setText(Format(Total_Recibido - Suma_Grid, QStringLiteral("###,##0")));

    Lee_Servicios(Total_Recibido);
    Termina();
}
