#pragma once
// The one failure of the program. Any failure of the server, of a conversion,
// of an index or of a division ends up here; the top level shows the run-time
// failure report with its number and text and ends the program.
#include <QString>
#include <stdexcept>

class FalloEjecucion : public std::runtime_error {
public:
    FalloEjecucion(long numero, const QString& texto)
        : std::runtime_error(texto.toStdString()), numero_(numero), texto_(texto) {}

    long numero() const { return numero_; }
    const QString& texto() const { return texto_; }

    // The run-time's own failures, with the numbers operators know from the report.
    static FalloEjecucion desbordamiento() { return {6, QStringLiteral("Overflow")}; }
    static FalloEjecucion fueraDeRango() { return {9, QStringLiteral("Subscript out of range")}; }
    static FalloEjecucion divisionPorCero() { return {11, QStringLiteral("Division by zero")}; }
    static FalloEjecucion tiposNoCoinciden() { return {13, QStringLiteral("Type mismatch")}; }
    static FalloEjecucion usoDeNulo() { return {94, QStringLiteral("Invalid use of Null")}; }
    // Failures of the data access layer.
    static FalloEjecucion campoNoEncontrado(const QString& nombre) {
        return {3265, QStringLiteral("Item cannot be found in the collection corresponding to the requested name or ordinal. (%1)").arg(nombre)};
    }
    static FalloEjecucion finDeDatos() {
        return {3021, QStringLiteral("Either BOF or EOF is True, or the current record has been deleted. Requested operation requires a current record.")};
    }
    static FalloEjecucion objetoCerrado() {
        return {3704, QStringLiteral("Operation is not allowed when the object is closed.")};
    }
    // A refusal of the server: the text is the server's own message.
    static FalloEjecucion servidor(const QString& texto) { return {-2147217900, texto}; }
    // The connection could not be opened.
    static FalloEjecucion conexion(const QString& texto) { return {-2147467259, texto}; }

private:
    long numero_;
    QString texto_;
};
