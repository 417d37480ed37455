#include "form1.h"
#include "controles.h"
#include "formato.h"
#include "listas.h"
#include "mensajes.h"
#include "module1.h"
#include "numeros.h"
#include "rejilla.h"

#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

using namespace Numeros;
using Mensajes::MsgBox;

namespace {

// The layout of a line's columns, in the order of Form1::Columna.
struct ColumnaLinea {
    const char* titulo;
    int ancho;
    Alineacion alineacion;
    bool editable;
};
const ColumnaLinea kColumnas[] = {
    {"Sec.", 700, Alineacion::Centro, false},
    {"Cliente", 800, Alineacion::Centro, true},
    {"Nombre Cliente", 3600, Alineacion::General, false},
    {"Enviado", 1000, Alineacion::Derecha, true},
    {"Recibido", 1000, Alineacion::Derecha, true},
    {"Prov.", 700, Alineacion::Centro, true},
    {"Nombre Proveedor", 3000, Alineacion::General, false},
    {"Oper.", 600, Alineacion::Centro, true},
    {"Serv.", 600, Alineacion::Centro, true},
};

QString punto(const Celda& c) { return c.texto().trimmed().replace(QLatin1Char(','), QLatin1Char('.')); }

} // namespace

Form1::Form1(Module1& modulo, MDIForm1& p) : Pantalla(modulo, p, QStringLiteral("Form1"))
{
    setWindowTitle(QStringLiteral("Ingreso de transacciones por lote"));

    (new QLabel(QStringLiteral("Fecha Transacción ="), this))->setGeometry(10, 12, 150, 24);
    Fecha1 = new QDateEdit(this);
    Fecha1->setGeometry(165, 12, 130, 24);
    Fecha1->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    Fecha1->setCalendarPopup(true);
    Controles::Nombrar(Fecha1, QStringLiteral("Fecha1"), QStringLiteral("Fecha Transacción ="));

    GRID = new Rejilla(QStringLiteral("GRID"), this);
    GRID->setGeometry(10, 48, 845, 540);

    const int xl = 870;
    Text1 = new QLineEdit(this);
    Text1->setGeometry(xl, 12, 345, 26);
    Controles::Nombrar(Text1, QStringLiteral("Text1"), QStringLiteral("Buscar cliente"));
    Controles::AlPulsarEnter(Text1, [this] { Busca_Cliente(); });
    Busca = Controles::Boton(this, QStringLiteral("Busca"), QStringLiteral("Buscar"), xl + 355, 10, 100);
    grid1 = new Rejilla(QStringLiteral("grid1"), this);
    grid1->setGeometry(xl, 48, 455, 300);
    REFRESCA_C = Controles::Boton(this, QStringLiteral("REFRESCA_C"), QStringLiteral("Refrescar Clientes"), xl, 352, 455);
    grid2 = new Rejilla(QStringLiteral("grid2"), this);
    grid2->setGeometry(xl, 392, 455, 160);
    Command1 = Controles::Boton(this, QStringLiteral("Command1"), QStringLiteral("Refrescar Proveedores"), xl, 558, 455);

    INCLUIR = Controles::Boton(this, QStringLiteral("INCLUIR"), QStringLiteral("Procesar Ingresos"), 10, 598, 220);
    SALIR = Controles::Boton(this, QStringLiteral("SALIR"), QStringLiteral("Salir"), 635, 598, 220);

    connect(GRID, &Rejilla::AfterColEdit, this, [this](int col) { GRID_AfterColEdit(col); });
    connect(grid1, &Rejilla::DblClick, this, [this] { Elige(Celdas1, grid1, colCliente); });
    connect(grid2, &Rejilla::DblClick, this, [this] { Elige(Celdas2, grid2, colProveedor); });
    // Enter on a look-up picks it, as the double click does.
    Controles::AlPulsarEnter(grid1->vista(), [this] { Elige(Celdas1, grid1, colCliente); });
    Controles::AlPulsarEnter(grid2->vista(), [this] { Elige(Celdas2, grid2, colProveedor); });
    connect(Busca, &QPushButton::clicked, this, [this] { Busca_Cliente(); });
    connect(REFRESCA_C, &QPushButton::clicked, this, [this] { Carga_Clientes(); });
    connect(Command1, &QPushButton::clicked, this, [this] { Carga_Proveedores(); });
    connect(INCLUIR, &QPushButton::clicked, this, [this] { INCLUIR_Click(); });
    connect(SALIR, &QPushButton::clicked, this, [this] { Unload(); });
}

void Form1::Form_Load()
{
    Colocar(100, 101, 20050, 10000);
    Fecha1->setDate(QDate::currentDate());
    Prepara_Lineas();
    Carga_Clientes();
    Carga_Proveedores();
}

void Form1::Form_Activate() { GRID->setFocus(); }

void Form1::Prepara_Lineas()
{
    for (int n = 0; n < int(std::size(kColumnas)); ++n)
        GRID->Columns(n)
            .setWidth(kColumnas[n].ancho)
            .setCaption(QString::fromUtf8(kColumnas[n].titulo))
            .setAlignment(kColumnas[n].alineacion)
            .setHeadAlignment(Alineacion::Centro)
            .setAllowFocus(kColumnas[n].editable);
    GRID->Columns(colOperadora).setDataWidth(5); // the operator, as its column holds it
    Celdas.ReDim(-1, -1, 0, 0);
    Celdas.ReDim(0, kLineas - 1, 0, colLetra);
    for (int i = 0; i < kLineas; ++i) {
        Celdas(i, colOperadora) = QStringLiteral("1");
        Celdas(i, colLetra) = QStringLiteral("T");
    }
    GRID->Array(Celdas);
    GRID->ReBind();
}

void Form1::Carga_Lista(Rejilla* grid, ::Celdas& celdas, const QString& titulo, const QString& procedimiento,
                        const QString& campoCodigo, const QString& campoNombre, const QString& busqueda)
{
    Listas::Prepara(grid, celdas, titulo, 5000);
    m.Cierra_Rs();
    m.Prepara_Comando(procedimiento);
    if (!busqueda.isNull())
        m.Comando.Parameters(1) = Valor(busqueda);
    m.Ejecuta_Comando();
    Listas::Llena(m, grid, celdas, campoCodigo, campoNombre);
}

void Form1::Carga_Clientes()
{
    Carga_Lista(grid1, Celdas1, QStringLiteral("Cliente"), QStringLiteral("TRU_CLIENTES"), QStringLiteral("C_CLIENTE"),
                QStringLiteral("D_cliente"));
}

void Form1::Carga_Proveedores()
{
    Carga_Lista(grid2, Celdas2, QStringLiteral("Proveedor"), QStringLiteral("TRU_proveedor"), QStringLiteral("C_proveedor"),
                QStringLiteral("D_proveedor"));
}

void Form1::Busca_Cliente()
{
    Carga_Lista(grid1, Celdas1, QStringLiteral("Cliente"), QStringLiteral("TRU_Busca_CLIENTES"), QStringLiteral("C_CLIENTE"),
                QStringLiteral("D_cliente"), Text1->text().trimmed());
    Text1->clear();
}

void Form1::GRID_AfterColEdit(int col)
{
    const int i = GRID->Bookmark();
    if (i < 0 || (col != colCliente && col != colProveedor))
        return;
    // A typed code shows its name; a text that is no code shows none.
    const QString codigo = Celdas(i, col).texto().trimmed();
    QString nombre;
    if (EsNumerico(codigo) && std::abs(CDbl(codigo)) < 32768) {
        const int16_t n = CInt(CDbl(codigo));
        Celdas(i, col) = Format(double(n), QStringLiteral("0000"));
        nombre = col == colCliente ? m.Nombre_Cliente(n) : m.Nombre_Proveedor(n);
    }
    Celdas(i, col + 1) = nombre;
    GRID->Refresh();
}

void Form1::Elige(const ::Celdas& lista, Rejilla* grid, int colCodigo)
{
    const int elegida = grid->Bookmark();
    const int linea = GRID->Bookmark() < 0 ? 0 : GRID->Bookmark();
    if (elegida < 0)
        return;
    Celdas(linea, colCodigo) = lista(elegida, Listas::colCodigo).texto();
    Celdas(linea, colCodigo + 1) = lista(elegida, Listas::colNombre).texto();
    GRID->Refresh();
}

int Form1::Servicio_De_Letra(const QString& letra) const
{
    for (int i = 1; i <= m.N_Servicios; ++i)
        if (!m.Servicios_T(i)[1].isEmpty() && m.Servicios_T(i)[5].compare(letra, Qt::CaseInsensitive) == 0)
            return i;
    return 0;
}

void Form1::INCLUIR_Click()
{
    GRID->Update();
    // Every line to store must name a known service before anything is sent.
    for (int i = 0; i < kLineas; ++i) {
        if (Celdas(i, colCliente).texto().trimmed().isEmpty())
            continue;
        if (Servicio_De_Letra(Celdas(i, colLetra).texto().trimmed()) == 0) {
            MsgBox(QStringLiteral("Letra del Servicio no esta asignada"), Mensajes::vbCritical);
            GRID->setBookmark(i);
            GRID->setCol(colLetra);
            GRID->setFocus();
            return;
        }
    }

    // The lines take the next sequences of the date, in their order.
    const QString Fecha_T = Module1::Fecha_AMD(Fecha1->date().toString(QStringLiteral("dd/MM/yyyy")));
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_Prepara"));
    m.Comando.Parameters(1) = Valor(Fecha_T);
    m.Ejecuta_Comando();
    int secuencia = CInt(m.Rs->Fields(QStringLiteral("secuenciA")).aDouble());
    m.Cierra_Rs();

    // Each line in the 28-value shape of a new transaction: unpaid, the whole
    // received amount counted as gain at 100 until a console completes it.
    m.SQL.clear();
    int lineas = 0;
    for (int i = 0; i < kLineas; ++i) {
        if (Celdas(i, colCliente).texto().trimmed().isEmpty())
            continue;
        ++lineas;
        Celdas(i, colSecuencia) = Format(double(++secuencia), QStringLiteral("0000"));
        const QString recibido = punto(Celdas(i, colRecibido));
        const QString proveedor = Celdas(i, colProveedor).texto().trimmed();
        m.SQL += QStringLiteral(" INSERT INTO MOVIMIENTOS VALUES ('") + Fecha_T + QStringLiteral("','") +
                 Celdas(i, colSecuencia).texto() + QStringLiteral("','") + Celdas(i, colCliente).texto().trimmed() +
                 QStringLiteral("','") + punto(Celdas(i, colEnviado)) + QStringLiteral("','") + recibido + QStringLiteral("','") +
                 (proveedor.isEmpty() ? QStringLiteral("0") : proveedor) + QStringLiteral("','0','','','0','") +
                 Celdas(i, colOperadora).texto().trimmed() + QStringLiteral("',2,'") +
                 QString::number(Servicio_De_Letra(Celdas(i, colLetra).texto().trimmed())) +
                 QStringLiteral("',0,'',0,0,'',100,'','") + recibido + QStringLiteral("','") + recibido +
                 QStringLiteral("',0,'','',0,0,'0')");
    }
    if (m.SQL.length() > 5)
        m.Conexion.Execute(m.SQL, lineas);
    m.Cierra_Rs();
    Prepara_Lineas();
}
