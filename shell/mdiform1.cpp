#include "mdiform1.h"
#include "controles.h"
#include "login.h"
#include "mensajes.h"
#include "module1.h"
#include "pantalla.h"

#include <QAction>
#include <QLinearGradient>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPainter>
#include <QProcess>
#include <QStandardPaths>

namespace {

// The menu tree; captions keep their leading blanks.
struct Entrada {
    const char* menu;
    const char* nombre;
    const char* titulo;
    QKeySequence atajo;
    const char* pantalla;
    bool oculta;
};

const struct {
    const char* nombre;
    const char* titulo;
} kMenus[] = {
    {"TABLAS", "        TABLAS Y PARAMETROS"},
    {"MOVI", "         AGREGAR TRANSACCIONES"},
    {"CONSULTA", "         CONSULTAR/MODIFICAR TRANSACCIONES"},
    {"ESTADISTICAS", "   ESTADISTICAS"},
    {"calcula", "   CALCULADORA"},
};

const Entrada kEntradas[] = {
    {"TABLAS", "PRECIO_DOLAR", "   PRECIO DEL DOLAR", QKeySequence(Qt::Key_F6), "NEW_DOLAR", false},
    {"TABLAS", "TAB_BANCOS", "  TABLA DE BANCOS -F1-", QKeySequence(Qt::Key_F1), "BANCOS", false},
    {"TABLAS", "TAB_CLIENTES", "  TABLA DE CLIENTES -F2-", QKeySequence(Qt::Key_F2), "Clientes", false},
    {"TABLAS", "TAB_PROVEEDORES", "  TABLA DE PROVEEDORES  -F3-", QKeySequence(Qt::Key_F3), "Proveedores", false},
    {"TABLAS", "CONCEPTO", "  TABLA DE CONCEPTOS", QKeySequence(Qt::Key_F12), "CONCEPTOS", false},
    {"TABLAS", "TAB_SERVICIOS", "  TABLA DE SERVICIOS", QKeySequence(Qt::CTRL | Qt::Key_F1), "Form_SERVICIOS", false},
    {"TABLAS", "SERVI_USDT", "  SERVICIOS USDT", QKeySequence(Qt::CTRL | Qt::Key_F7), "SERVICIOS_USDT", true},
    {"TABLAS", "BANK_ZELLE", "  TABLA BANCOS ZELLE", QKeySequence(), "BANCOS_ZELLE", false},
    {"TABLAS", "DOLAR_SIMPLE", "  PRECIO DEL DOLAR SIMPLE", QKeySequence(), "Dolar", false},
    {"TABLAS", "DOLAR_BILLETERAS", "  PRECIOS DEL DOLAR POR BILLETERA", QKeySequence(), "DOLAR_NEW", false},
    {"MOVI", "AGREGAR", "        AGREGAR  -F4-", QKeySequence(Qt::Key_F4), "Movimientos", false},
    {"CONSULTA", "CONSULTAR", "        CONSULTAS  -F5-", QKeySequence(Qt::Key_F5), "Form2", false},
    {"CONSULTA", "CONSULTA_FECHA_PAGO", "     CONSULTAS POR FECHA DE PAGO", QKeySequence(Qt::Key_F7), "Form2_Pago", false},
    {"CONSULTA", "CONSULTAS_USDT", "        CONSULTAS USDT", QKeySequence(Qt::CTRL | Qt::Key_F6), "F5_USDT", true},
    {"ESTADISTICAS", "ESTADISTICA", " ESTADISTICAS", QKeySequence(Qt::Key_F8), "CALCULOS01", false},
    {"ESTADISTICAS", "ESTADISTICAS_MENSUALES", " ESTADISTICAS MENSUALES", QKeySequence(Qt::Key_F9), "Resumen_mensual", false},
    {"ESTADISTICAS", "ESTADISTICAS_USDT", "ESTADISTICAS USDT", QKeySequence(Qt::CTRL | Qt::Key_F9), "CALCULOS01_USDT", true},
    {"ESTADISTICAS", "ESTADISTICAS_MENSUALES_USDT", "RESUMEN MENSUAL USDT", QKeySequence(Qt::CTRL | Qt::Key_F11),
     "RESUMEN_MENSUAL_USDT", true},
    {"calcula", "CALC", " CALCULADORA", QKeySequence(), nullptr, false},
};

const char* const kMenusDeTrabajo[] = {"TABLAS", "MOVI", "CONSULTA", "ESTADISTICAS"};

// The background of the frame: the business's name over a deep blue.
class AreaConFondo : public QMdiArea {
public:
    using QMdiArea::QMdiArea;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(viewport());
        const QRect r = viewport()->rect();
        QLinearGradient g(r.topLeft(), r.bottomRight());
        g.setColorAt(0, QColor(0x0b, 0x2a, 0x4a));
        g.setColorAt(1, QColor(0x1d, 0x5c, 0x7a));
        p.fillRect(r, g);
        p.setRenderHint(QPainter::Antialiasing);
        QFont f = font();
        f.setBold(true);
        f.setPixelSize(qMax(24, r.height() / 9));
        p.setFont(f);
        p.setPen(QColor(255, 255, 255, 70));
        p.drawText(r.adjusted(0, 0, 0, -r.height() / 8), Qt::AlignCenter, QStringLiteral("CONTROL DE PAGOS"));
        f.setBold(false);
        f.setPixelSize(qMax(12, r.height() / 30));
        p.setFont(f);
        p.setPen(QColor(255, 255, 255, 90));
        p.drawText(r.adjusted(0, r.height() / 6, 0, 0), Qt::AlignCenter,
                   QStringLiteral("TRUMIN  ·  ZELLE  ·  ZINLI  ·  AMAZON  ·  USDT"));
    }
};

} // namespace

MDIForm1::MDIForm1(Module1& modulo) : m(modulo)
{
    setObjectName(QStringLiteral("MDIForm1"));
    Controles::EnterComoEspacio();
    setWindowTitle(m.Base_Datos + QStringLiteral("  Control de Pagos "));
    area_ = new AreaConFondo(this);
    area_->setObjectName(QStringLiteral("AreaMDI"));
    setCentralWidget(area_);
    connect(area_, &QMdiArea::subWindowActivated, this, &MDIForm1::activada);

    for (const auto& def : kMenus) {
        QMenu* menu = menuBar()->addMenu(QString::fromUtf8(def.titulo));
        menu->setObjectName(QString::fromLatin1(def.nombre));
        menu->menuAction()->setObjectName(QString::fromLatin1(def.nombre));
        menus_.insert(QString::fromLatin1(def.nombre), menu);
    }
    for (const auto& def : kEntradas) {
        const QString nombre = QString::fromLatin1(def.nombre);
        QAction* a = menus_.value(QString::fromLatin1(def.menu))->addAction(QString::fromUtf8(def.titulo));
        a->setObjectName(nombre);
        a->setShortcut(def.atajo);
        a->setShortcutContext(Qt::ApplicationShortcut);
        // The USDT entries stand ready but out of the operators' reach.
        a->setEnabled(!def.oculta);
        a->setVisible(!def.oculta);
        entradas_.insert(nombre, a);
        if (def.pantalla) {
            const QString pantalla = QString::fromLatin1(def.pantalla);
            connect(a, &QAction::triggered, this, [this, pantalla] { Mostrar(pantalla); });
        }
    }
    connect(entradas_.value(QStringLiteral("CALC")), &QAction::triggered, this, &MDIForm1::Abre_Calculadora);

    Registrar(QStringLiteral("LOGIN"), [](Module1& mod, MDIForm1& p) { return new LOGIN(mod, p); });
}

void MDIForm1::Registrar(const QString& nombrePantalla, FabricaPantalla fabrica)
{
    fabricas_.insert(nombrePantalla, std::move(fabrica));
}

Pantalla* MDIForm1::Abierta(const QString& nombrePantalla) const { return abiertas_.value(nombrePantalla); }

Pantalla* MDIForm1::Mostrar(const QString& nombrePantalla)
{
    if (Pantalla* abierta = Abierta(nombrePantalla)) {
        area_->setActiveSubWindow(abierta->ventana());
        abierta->ventana()->raise();
        return abierta;
    }
    const auto fabrica = fabricas_.value(nombrePantalla);
    if (!fabrica)
        return nullptr; // the screen of this entry is not part of this build
    Pantalla* pantalla = fabrica(m, *this);
    abiertas_.insert(nombrePantalla, pantalla);
    QMdiSubWindow* ventana = area_->addSubWindow(pantalla);
    ventana->setAttribute(Qt::WA_DeleteOnClose);
    ventana->setWindowTitle(pantalla->windowTitle());
    connect(pantalla, &QWidget::windowTitleChanged, ventana, &QWidget::setWindowTitle);
    pantalla->Form_Load();
    ventana->show();
    area_->setActiveSubWindow(ventana);
    return pantalla;
}

void MDIForm1::activada(QMdiSubWindow* ventana)
{
    // The frame losing and regaining the focus is not a new activation of its screen.
    if (!ventana || ventana == ultimaActiva_)
        return;
    ultimaActiva_ = ventana;
    if (auto* pantalla = qobject_cast<Pantalla*>(ventana->widget()))
        pantalla->Form_Activate();
}

void MDIForm1::Habilita_Menus(bool habilitados)
{
    for (const char* nombre : kMenusDeTrabajo) {
        QMenu* menu = menus_.value(QString::fromLatin1(nombre));
        menu->menuAction()->setEnabled(habilitados);
        // A disabled menu's shortcuts are dead too; hidden entries stay off.
        for (QAction* a : menu->actions())
            a->setEnabled(habilitados && a->isVisible());
    }
}

QMenu* MDIForm1::menu(const QString& nombre) const { return menus_.value(nombre); }
QAction* MDIForm1::entrada(const QString& nombre) const { return entradas_.value(nombre); }

void MDIForm1::Abre_Calculadora()
{
    static const char* const calculadoras[] = {"gnome-calculator", "kcalc",        "galculator", "mate-calc",
                                               "qalculate-gtk",    "qalculate-qt", "xcalc"};
    for (const char* programa : calculadoras) {
        const QString ruta = QStandardPaths::findExecutable(QString::fromLatin1(programa));
        if (!ruta.isEmpty() && QProcess::startDetached(ruta, {}))
            return;
    }
    Mensajes::MsgBox(QStringLiteral("No se encontró una calculadora en este equipo."), Mensajes::vbInformation);
}
