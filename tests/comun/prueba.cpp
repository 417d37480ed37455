#include "prueba.h"

namespace Pruebas {
std::vector<Fabrica>& registro()
{
    static std::vector<Fabrica> r;
    return r;
}
} // namespace Pruebas
