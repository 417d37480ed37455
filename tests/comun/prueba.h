#pragma once
// Each test file registers its QtTest classes here; the folder's program runs
// them all (tests/comun/principal.cpp) and fails when any of them fails.
#include <QObject>
#include <QtTest>
#include <functional>
#include <vector>

namespace Pruebas {
using Fabrica = std::function<QObject*()>;
std::vector<Fabrica>& registro();
struct Registrar {
    explicit Registrar(Fabrica f) { registro().push_back(std::move(f)); }
};
} // namespace Pruebas

#define REGISTRAR_PRUEBA(Clase) static const Pruebas::Registrar registrar_##Clase([]() -> QObject* { return new Clase; })
