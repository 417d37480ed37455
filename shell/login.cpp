#include "login.h"
#include "controles.h"
#include "mdiform1.h"
#include "mensajes.h"
#include "module1.h"
#include "numeros.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QThread>
#include <QWindow>
#include <QMdiArea>
#include <QVBoxLayout>
#include <cstdlib>
#include <ctime>

// The version stamp (year.month.day) is the project's version, the same one the package carries.
const QString LOGIN::Version = QStringLiteral("  Contról de Pagos versión = " VERSION_PROGRAMA "  (Linux)");

LOGIN::LOGIN(Module1& modulo, MDIForm1& p) : Pantalla(modulo, p, QStringLiteral("LOGIN"))
{
    setWindowTitle(QStringLiteral("LOGIN"));
    Text1 = new QLineEdit(this);
    Controles::Nombrar(Text1, QStringLiteral("Text1"), QStringLiteral("Código de acceso"));
    Text1->setEchoMode(QLineEdit::Password);
    Text1->setPlaceholderText(QStringLiteral("Código de acceso"));
    Text1->setAlignment(Qt::AlignCenter);
    Text1->setFixedWidth(px(3000));
    QFont f = Text1->font();
    f.setPointSize(14);
    Text1->setFont(f);
    auto* caja = new QVBoxLayout(this);
    caja->addStretch();
    caja->addWidget(Text1, 0, Qt::AlignHCenter);
    caja->addStretch();
    // Enter checks the code; the key itself is kept.
    Controles::AlPulsarEnter(
        Text1, [this] { Valida_Clave(); }, false);
}

void LOGIN::Form_Load() { Tamano(14501, 8000); }

void LOGIN::fondoTexto(const QColor& color)
{
    QPalette pal = Text1->palette();
    pal.setColor(QPalette::Base, color);
    Text1->setPalette(pal);
}

void LOGIN::Form_Activate()
{
    Text1->clear();
    fondoTexto(Qt::black);
    principal.Habilita_Menus(false);
    Pinta_Antes_De_Conectar();
    Conectar();
    principal.setWindowTitle(m.Base_Datos + Version);
    Carga_Parametros(m);
    m.Carga_Dolar_Actual();
    fondoTexto(Qt::white);
    Text1->setFocus();
}

void LOGIN::Pinta_Antes_De_Conectar()
{
    // At start-up this activation comes before the window system has shown
    // the main window, and a paint then does nothing: wait (a few seconds at
    // most) until it is on the screen, then paint the main window, its menus,
    // this screen and the black box at once, so they stay in view while the
    // connection is opened. The operator's keys wait for the connection.
    QWidget* ventana = window();
    QElapsedTimer espera;
    espera.start();
    while (!(ventana->windowHandle() && ventana->windowHandle()->isExposed()) && espera.elapsed() < 3000) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        QThread::msleep(5);
    }
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    ventana->repaint();
}

void LOGIN::Conectar()
{
    Intentos = 0;
    const Despliegue& d = m.despliegue;
    const bool remoto = d.tipo == Despliegue::Tipo::SqlServer;
    m.Servidor = remoto ? d.servidor + QStringLiteral(",") + QString::number(d.puerto) : d.archivo;
    m.Base_Datos = QStringLiteral("RAMIL");

    // Head of an attempt. A failed open is not caught here: it ends the program
    // with the run-time report after one attempt, so the limit below is not reached.
    ++Intentos;
    if (Intentos == 6) {
        Mensajes::MsgBox(QStringLiteral(" ERROR CONECCION DESPUES DE 5 INTENTOS"));
        std::exit(1);
    }
    repaint();
    if (m.Conexion.Abierta())
        m.Conexion.Close();
    const QString usuario = QStringLiteral("TRUMIN");
    m.Conexion.CursorLocation = 3;
    m.Conexion.CommandTimeout = 0;
    m.Conexion.ConnectionTimeout = 10;
    if (remoto)
        m.Conexion.ConnectionString = QStringLiteral("Provider=sqlserver;Server=") + m.Servidor + QStringLiteral(";Database=") +
                                      m.Base_Datos + QStringLiteral(";User=") + usuario + QStringLiteral(";Password={") +
                                      d.clave + QStringLiteral("};Timeout=10");
    else
        m.Conexion.ConnectionString = QStringLiteral("Provider=embebido;Data Source=") + m.Servidor;
    m.Conexion.Open();

    // With the embedded server this machine's clock is the server's clock.
    if (!m.Conexion.EsLocal()) {
        try {
            m.Hora_Servidor();
            Pone_Hora();
        } catch (...) {
        }
    }
}

void LOGIN::Pone_Hora()
{
    QDateTime servidor(QDate(m.Ano_S, m.Mes_S, m.Dia_S), QTime(m.Hora_S, m.Minuto_S, m.Segundo_S));
    timespec ts {};
    ts.tv_sec = servidor.toSecsSinceEpoch();
    clock_settime(CLOCK_REALTIME, &ts); // refused without the right to set the clock: the PC keeps its time
}

void LOGIN::Carga_Parametros(Module1& m)
{
    m.Cierra_Rs();
    m.Prepara_Comando(QStringLiteral("TRU_PARAMETROS"));
    m.Ejecuta_Comando();
    m.Clave = m.Rs->Fields(QStringLiteral("Clave")).aTexto();
    m.Fecha_Param = m.Rs->Fields(QStringLiteral("Fecha")).aTexto();
    m.Fecha_Compraventas = m.Rs->Fields(QStringLiteral("Fecha_Compraventas")).aTexto();
    m.Dolar_Param = Numeros::CSng(m.Rs->Fields(QStringLiteral("Dolar")).aDouble());
    m.Cierra_Rs();
    m.Carga_Tablas();
}

void LOGIN::Valida_Clave()
{
    m.Nivel = true;
    const QString codigo = Text1->text().trimmed();
    if (codigo == QLatin1String("3607")) {
        m.Nivel = false;
    } else if (codigo != m.Clave) {
        Text1->clear();
        Text1->setFocus();
        return;
    }
    principal.Habilita_Menus(true);
    Unload();
    // The keyboard stays with the main window, so that F4, F5... work at once.
    principal.activateWindow();
    principal.area()->setFocus();
}
