#pragma once
// The failure a call must end in: its number and a part of its text ("" for any).
#include "fallo.h"

#include <QtTest>
#include <functional>

inline const long kServidor = FalloEjecucion::servidor({}).numero();

#define ESPERAR_FALLO(expresion, esperado, parte)                                                                                \
    do {                                                                                                                         \
        try {                                                                                                                    \
            expresion;                                                                                                           \
            QFAIL("no failure: " #expresion);                                                                                    \
        } catch (const FalloEjecucion& f) {                                                                                      \
            QCOMPARE(f.numero(), long(esperado));                                                                                \
            QVERIFY2(f.texto().contains(QLatin1String(parte)), qPrintable(f.texto()));                                           \
        }                                                                                                                        \
    } while (0)

// The failure's number an action stops with; 0 when it runs through.
inline long numeroDeFallo(const std::function<void()>& f)
{
    try {
        f();
    } catch (const FalloEjecucion& e) {
        return e.numero();
    }
    return 0;
}
