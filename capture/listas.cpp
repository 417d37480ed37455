#include "listas.h"
#include "celdas.h"
#include "formato.h"
#include "module1.h"
#include "rejilla.h"

namespace Listas {

void Prepara(Rejilla* grid, Celdas& celdas, const QString& titulo, int ancho)
{
    grid->setAllowUpdate(false);
    grid->Columns(colCodigo).setWidth(800).setCaption(QStringLiteral("Código")).setAlignment(Alineacion::Centro);
    grid->Columns(colNombre).setWidth(ancho).setCaption(titulo);
    celdas.ReDim(-1, -1, 0, 0);
    grid->Array(celdas);
    grid->ReBind();
}

void Llena(Module1& m, Rejilla* grid, Celdas& celdas, const QString& campoCodigo, const QString& campoNombre)
{
    for (int fila = 0; !m.Rs->Eof(); ++fila, m.Rs->MoveNext()) {
        celdas.ReDim(0, fila, 0, colNombre);
        celdas.Value(fila, colCodigo) = Format(m.Rs->Fields(campoCodigo), QStringLiteral("0000"));
        celdas.Value(fila, colNombre) = Format(m.Rs->Fields(campoNombre), QStringLiteral("&"));
    }
    m.Cierra_Rs();
    grid->Array(celdas);
    grid->ReBind();
}

} // namespace Listas
