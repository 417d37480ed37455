#include "new_dolar.h"
#include "controles.h"
#include "formato.h"
#include "module1.h"
#include "numeros.h"
#include "rejilla.h"

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

using namespace Numeros;

QString NEW_DOLAR::Con_Coma(QString texto) { return texto.replace(QLatin1Char('.'), QLatin1Char(',')); }

NEW_DOLAR::NEW_DOLAR(Module1& modulo, MDIForm1& p) : Pantalla(modulo, p, QStringLiteral("NEW_DOLAR"))
{
    setWindowTitle(QStringLiteral("PRECIO DEL DOLAR"));

    auto etiqueta = [this](QMap<int, QLabel*>& arreglo, const QString& nombre, int indice, const QString& texto, int x, int y,
                           int w) {
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
    etiqueta(Label1, QStringLiteral("Label1"), lblDolar, QStringLiteral("Ultimo Dolar del día ="), 10, 10, 170);
    Text1 = campo(QStringLiteral("Text1"), QStringLiteral("Ultimo Dolar del día ="), 185, 9, 110);
    Text1->setAlignment(Qt::AlignRight);
    etiqueta(Label1, QStringLiteral("Label1"), lblUltima, QString(), 320, 6, 560);
    etiqueta(Label1, QStringLiteral("Label1"), lblAhora, QString(), 320, 28, 560);

    // ---- the two tables side by side
    GRID = rejilla(this, QStringLiteral("GRID"), 10, 60, 600, 420);
    GRID1 = rejilla(this, QStringLiteral("GRID1"), 625, 60, 530, 420);

    CALCULOS = Controles::Boton(this, QStringLiteral("CALCULOS"), QStringLiteral("Calcular Valores"), 10, 490, 190);
    Procesar = Controles::Boton(this, QStringLiteral("Procesar"), QStringLiteral("Actualizar Valores"), 210, 490, 190);
    INCLUIR = Controles::Boton(this, QStringLiteral("INCLUIR"), QStringLiteral("Incluir Concepto"), 410, 490, 190);
    ACTUALIZAR = Controles::Boton(this, QStringLiteral("ACTUALIZAR"), QStringLiteral("Actualizar Montos"), 410, 530, 190);

    MODIFICAR_USDT = Controles::Boton(this, QStringLiteral("MODIFICAR_USDT"), QStringLiteral("Modificar Tabla USDT"), 625, 490,
                                      220);
    etiqueta(uev, QStringLiteral("uev"), uevServicio, QStringLiteral("Nuevo Servicio USDT"), 625, 528, 250);
    Text2 = campo(QStringLiteral("Text2"), QStringLiteral("Nuevo Servicio USDT"), 625, 550, 250);
    Text2->setMaxLength(60);
    etiqueta(uev, QStringLiteral("uev"), uevEquivalencia, QStringLiteral("Equivalencia"), 885, 528, 90);
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
        Celdas1.Value(GRID1->Bookmark(), usdtMarca) = -1;
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
    Label1[lblUltima]->setText(QStringLiteral("Ultima actualización de los valores = ") + m.Fecha_Param);
    Label1[lblAhora]->setText(QStringLiteral("Actualización de los Valores al : ") +
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

// ---------------------------------------------------------------- notifications

void NEW_DOLAR::Prepara_Grid2()
{
    const auto c = Alineacion::Centro, g = Alineacion::General;
    // In the order of ColumnaNoti.
    struct {
        const char* titulo;
        int ancho;
        Alineacion alineacion;
        bool foco;
    } const columnas[] = {{"C-P", 600, c, false},     {"Nombre Proveedor", 2500, g, true},     {"Titulo", 2500, g, true},
                          {"Mensaje", 2500, g, true}, {"Fecha Actualizacion", 3200, c, false}, {"Tipo", 2000, g, false},
                          {"Leida", 700, c, true}};
    for (int n = notiProveedor; n <= notiLeida; ++n)
        GRID2->Columns(n)
            .setWidth(columnas[n].ancho)
            .setCaption(QString::fromUtf8(columnas[n].titulo))
            .setAlignment(columnas[n].alineacion)
            .setHeadAlignment(c)
            .setAllowFocus(columnas[n].foco)
            .setLocked(true);
    GRID2->Columns(notiOculta).setVisible(false).setAllowFocus(false);
    GRID2->setAllowUpdate(false); // read only: nothing is stored from here
    Celdas2.ReDim(-1, -1, 0, notiOculta);
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
        Celdas2.ReDim(0, i, 0, notiLeida);
        Celdas2(i, notiProveedor) = Format(m.Rs->Fields(QStringLiteral("Codigo_proveedor")), QStringLiteral("00"));
        int col = notiNombre;
        for (const char* campo : {"Nombre", "titulo", "mensaje", "Fecha", "tipo", "leida"})
            Celdas2(i, col++) = Format(m.Rs->Fields(QString::fromLatin1(campo)), QStringLiteral("&"));
        m.Rs->MoveNext();
    }
    m.Cierra_Rs();
    GRID2->Array(Celdas2);
    GRID2->ReBind();
}

void NEW_DOLAR::CIERRA_NOTI_Click() { Frame1->hide(); }
