// What the statistics screens offer beyond their own controls, on the context
// menu of their five grids: the chart, the printed report, and the names an
// export of the grids proposes.
#include "calculos01.h"
#include "grafico.h"
#include "informe.h"
#include "module1.h"

#include <QAction>
#include <QLineEdit>
#include <QRadioButton>

namespace {

QString nombreDeMes(int mes)
{
    static const char* const meses[] = {"Enero", "Febrero", "Marzo",     "Abril",   "Mayo",      "Junio",
                                        "Julio", "Agosto",  "Septiembre", "Octubre", "Noviembre", "Diciembre"};
    return mes >= 1 && mes <= 12 ? QString::fromLatin1(meses[mes - 1]) : QString();
}

// "2025-03" as "Marzo 2025".
QString mesEnPalabras(const QString& clave)
{
    const QString mes = nombreDeMes(clave.mid(5).toInt());
    return mes.isEmpty() ? clave : mes + QLatin1Char(' ') + clave.left(4);
}

} // namespace

void CALCULOS01::Prepara_Herramientas()
{
    auto accion = [this](const QString& texto, const QKeySequence& tecla, const QString& nombre, void (CALCULOS01::*hacer)()) {
        auto* a = new QAction(texto, this);
        a->setObjectName(nombre);
        a->setShortcut(tecla);
        // The key works anywhere on the screen, and only there.
        a->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(a, &QAction::triggered, this, hacer);
        addAction(a);
        return a;
    };
    Accion_Grafico = accion(QStringLiteral("Gráfico..."), QKeySequence(Qt::CTRL | Qt::Key_G), QStringLiteral("grafico"),
                            &CALCULOS01::Abre_Grafico);
    Accion_Informe = accion(QStringLiteral("Imprimir informe..."), QKeySequence(Qt::CTRL | Qt::Key_P),
                            QStringLiteral("informe"), &CALCULOS01::Abre_Informe);

    // An export of any of the five grids writes all five, one sheet each.
    const auto nombre = [this] {
        return QStringLiteral("estadisticas-") + (Es_Usdt() ? QStringLiteral("usdt-") : QString()) + Periodo_Archivo();
    };
    const auto hojas = [this] {
        return std::vector<HojaExportada> {{Por_Meses() ? QStringLiteral("Por mes") : QStringLiteral("Por día"), GRID},
                                           {QStringLiteral("Proveedores"), GRID1},
                                           {QStringLiteral("Clientes"), GRID2},
                                           {QStringLiteral("Bancos"), GRID4},
                                           {QStringLiteral("Servicios"), GRID5}};
    };
    for (Rejilla* g : {GRID, GRID1, GRID2, GRID4, GRID5}) {
        g->agregarAccion(Accion_Grafico);
        g->agregarAccion(Accion_Informe);
        g->setExportacion(nombre, hojas);
    }
}

void CALCULOS01::Abre_Grafico() { Grafico::Mostrar(*this); }

void CALCULOS01::Abre_Informe() { Informe::Mostrar(*this, Informe::Titulo(m.despliegue)); }

QString CALCULOS01::Periodo_Archivo() const
{
    if (Por_Meses()) {
        // The months of GRID: one year, or the first and the last month.
        if (Celdas.filas() == 0)
            return Text1[txtAno]->text().trimmed();
        const QString primero = Celdas.Value(Celdas.LowerBound(1), colDia).texto();
        const QString ultimo = Celdas.Value(Celdas.UpperBound(1), colDia).texto();
        return primero.left(4) == ultimo.left(4) ? primero.left(4) : primero + QStringLiteral("-a-") + ultimo;
    }
    const QString mes = Text1[txtMes]->text().trimmed();
    return Text1[txtAno]->text().trimmed() + QLatin1Char('-') + (mes.size() == 1 ? QLatin1Char('0') + mes : mes);
}

QString CALCULOS01::Periodo() const
{
    const QString clave = Periodo_Archivo();
    if (!Por_Meses())
        return mesEnPalabras(clave);
    if (clave.size() == 4)
        return QStringLiteral("Año ") + clave;
    const int a = clave.indexOf(QLatin1String("-a-"));
    return a < 0 ? clave : mesEnPalabras(clave.left(a)) + QStringLiteral(" a ") + mesEnPalabras(clave.mid(a + 3));
}

QString CALCULOS01::Filtros() const
{
    QString operadora = QStringLiteral("Todas");
    for (const QRadioButton* b : Option2)
        if (b->isChecked())
            operadora = b->text();
    return QStringLiteral("Operadora: ") + operadora + QStringLiteral(" — Servicio: ") + Servicio_Elegido;
}
