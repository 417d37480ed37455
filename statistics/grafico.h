#pragma once
// The chart of a statistics screen: the figures it shows, drawn. One tab with
// the period row by row (received and directs as bars side by side, the gain
// as a line on its own axis at the right, Saturdays and Sundays in lighter
// colours), one with the shares by service and one by provider (the largest
// eight and "Otros" for the rest). It reads the screen's grids, so it shows
// the screen's period and filters, and draws again after each load.
//
// The figures come out of the grids by datosDe, a plain function; the window
// only draws them.
#include <QDialog>
#include <QString>

#include <functional>
#include <vector>

class CALCULOS01;
class QChart;
class QChartView;
class QTabWidget;

// A row of GRID: a day (or a month) with its money.
struct PuntoGrafico {
    QString etiqueta; // "Sab 01", or "Mar 2025" on the summaries
    bool finDeSemana = false;
    bool conDatos = false; // a day (a month) with figures, not one still to come
    double recibido = 0;
    double directos = 0;
    double ganancia = 0;
};

// A slice of a share: a service or a provider, or "Otros".
struct PorcionGrafico {
    QString nombre;
    double monto = 0;
};

struct DatosGrafico {
    QString titulo;                              // period and filters
    QString recibido = QStringLiteral("Recibido"); // "Enviado" on the USDT screens
    bool porMeses = false;
    std::vector<PuntoGrafico> puntos;        // in the order of the calendar
    std::vector<PorcionGrafico> servicios;   // from GRID5
    std::vector<PorcionGrafico> proveedores; // from GRID1
};

// The figures of the screen as its grids hold them.
DatosGrafico datosDe(const CALCULOS01& pantalla);
// The slices with money, the largest first; past the first `cuantas`, the
// rest added up as "Otros".
std::vector<PorcionGrafico> mayoresYOtros(std::vector<PorcionGrafico> porciones, size_t cuantas = 8);

// The charts themselves, for the window and for the printed report.
QChart* graficoPorDia(const DatosGrafico& datos);
QChart* graficoDeTorta(const std::vector<PorcionGrafico>& porciones, const QString& titulo);
// A chart drawn into a picture of the size given; the chart is deleted.
QImage imagenDe(QChart* grafico, QSize tamano);

class Grafico : public QDialog {
    Q_OBJECT
public:
    // Opens the chart of the screen, or brings it to the front drawn anew.
    static Grafico* Mostrar(CALCULOS01& pantalla);
    explicit Grafico(CALCULOS01& pantalla);

    enum Pestana : int { tabDias = 0, tabServicios, tabProveedores };
    QTabWidget* pestanas() const { return pestanas_; }
    QChartView* vista(int pestana) const;
    QChart* grafico(int pestana) const;

    // Draws the screen's figures again.
    void Actualiza();
    // The chart in view as a picture, into the clipboard ("Copiar imagen").
    QImage imagen() const;
    void copiarImagen() const;
    // "Guardar como...": asks for the file, then writes it.
    void guardarComo();
    // The chart in view as a PNG picture or a PDF page, by the extension.
    bool guardar(const QString& archivo) const;

    // What "Guardar como..." asks with: the window, the dialog's title, the
    // name proposed and the filters; it answers the file chosen, or an empty
    // text. Tests replace it; an empty function puts the real dialog back.
    using PideArchivo = std::function<QString(QWidget*, const QString&, const QString&, const QString&)>;
    static void Reemplazar(PideArchivo pide);

private:
    CALCULOS01& pantalla_;
    QTabWidget* pestanas_;
};
