#pragma once
// The one failure of the program. Any failure of the server, of a conversion,
// of an index or of a division ends up here; the top level shows the run-time
// failure report with its number and text and ends the program.
#include <QString>
#include <stdexcept>
#include <utility>
#include <vector>

class FalloEjecucion : public std::runtime_error {
public:
    FalloEjecucion(long numero, const QString& texto) : std::runtime_error(texto.toStdString()), numero_(numero), texto_(texto) {}
    // A failure of the run-time itself, with the text the report gives for its number.
    explicit FalloEjecucion(long numero) : FalloEjecucion(numero, Texto(numero)) {}

    long numero() const { return numero_; }
    const QString& texto() const { return texto_; }

    // The report's words for a run-time failure number, as the operators read
    // them in Spanish; a number without words of its own gets the general ones.
    static QString Texto(long numero)
    {
        switch (numero) {
        case 5:
            return QStringLiteral("Llamada a procedimiento o argumento no válidos");
        case 6:
            return QStringLiteral("Desbordamiento");
        case 7:
            return QStringLiteral("Memoria insuficiente");
        case 9:
            return QStringLiteral("Subíndice fuera del intervalo");
        case 11:
            return QStringLiteral("División por cero");
        case 13:
            return QStringLiteral("No coinciden los tipos");
        case 51:
            return QStringLiteral("Error interno");
        case 53:
            return QStringLiteral("No se ha encontrado el archivo");
        case 75:
            return QStringLiteral("Error de acceso a la ruta o al archivo");
        case 94:
            return QStringLiteral("Uso no válido de Null");
        case 481:
            return QStringLiteral("Imagen no válida");
        case 3021:
            return QStringLiteral("BOF o EOF es True, o el registro actual se eliminó. La operación solicitada "
                                  "requiere un registro actual.");
        case 3265:
            return QStringLiteral("No se puede encontrar el elemento en la colección correspondiente al nombre o "
                                  "al ordinal solicitado.");
        case 3704:
            return QStringLiteral("No se permite realizar esta operación si el objeto está cerrado.");
        case -2147217864:
            return QStringLiteral("No se encontró la fila para actualizarla. Algunos valores pueden haber cambiado "
                                  "desde la última vez que se leyeron.");
        default:
            return QStringLiteral("Error definido por la aplicación o por el objeto");
        }
    }

    // The run-time's own failures, with the numbers operators know from the report.
    static FalloEjecucion desbordamiento() { return FalloEjecucion(6); }
    static FalloEjecucion fueraDeRango() { return FalloEjecucion(9); }
    static FalloEjecucion divisionPorCero() { return FalloEjecucion(11); }
    static FalloEjecucion tiposNoCoinciden() { return FalloEjecucion(13); }
    static FalloEjecucion usoDeNulo() { return FalloEjecucion(94); }
    // Failures of the data access layer; the missing field's name follows the text.
    static FalloEjecucion campoNoEncontrado(const QString& nombre)
    {
        return {3265, QStringLiteral("%1 (%2)").arg(Texto(3265), nombre)};
    }
    static FalloEjecucion finDeDatos() { return FalloEjecucion(3021); }
    static FalloEjecucion objetoCerrado() { return FalloEjecucion(3704); }
    // A refusal of the server: the text is the server's own message.
    static FalloEjecucion servidor(const QString& texto) { return {-2147217900, texto}; }
    // The connection could not be opened.
    static FalloEjecucion conexion(const QString& texto) { return {-2147467259, texto}; }

private:
    long numero_;
    QString texto_;
};

// A batch refused before anything of it was written: rows that it saves or
// deletes were changed, or deleted, by someone else after the screen loaded
// them. Each row by its date yyyymmdd and sequence.
class FalloFilasCambiadas : public FalloEjecucion {
public:
    using Claves = std::vector<std::pair<QString, int>>;
    explicit FalloFilasCambiadas(Claves claves) : FalloEjecucion(kNumero), claves_(std::move(claves)) {}
    const Claves& claves() const { return claves_; }
    // The number of the run-time for a row changed since it was read.
    static constexpr long kNumero = -2147217864;

private:
    Claves claves_;
};
