#include "conexion.h"
#include "fallo.h"
#include "guardia.h"

#include <algorithm>

Recordset::Recordset(Resultados conjuntos) : conjuntos_(std::move(conjuntos)), abierto_(true) {}

const ConjuntoResultados* Recordset::actual() const
{
    if (!abierto_ || conjunto_ >= conjuntos_.size())
        return nullptr;
    return &conjuntos_[conjunto_];
}

bool Recordset::Eof() const
{
    const auto* c = actual();
    if (!c)
        throw FalloEjecucion::objetoCerrado();
    return fila_ >= c->filas.size();
}

void Recordset::MoveNext()
{
    if (Eof())
        throw FalloEjecucion::finDeDatos();
    ++fila_;
}

void Recordset::MoveFirst()
{
    if (!actual())
        throw FalloEjecucion::objetoCerrado();
    fila_ = 0;
}

bool Recordset::TieneCampo(const QString& nombre) const
{
    const auto* c = actual();
    if (!c)
        return false;
    for (const auto& columna : c->columnas)
        if (columna.compare(nombre, Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

int Recordset::Ordinal(const QString& nombre) const
{
    const auto* c = actual();
    if (!c)
        throw FalloEjecucion::objetoCerrado();
    for (qsizetype i = 0; i < c->columnas.size(); ++i)
        if (c->columnas[i].compare(nombre, Qt::CaseInsensitive) == 0)
            return int(i);
    throw FalloEjecucion::campoNoEncontrado(nombre);
}

const Valor& Recordset::Fields(int ordinal) const
{
    const auto* c = actual();
    if (!c)
        throw FalloEjecucion::objetoCerrado();
    if (fila_ >= c->filas.size())
        throw FalloEjecucion::finDeDatos();
    if (ordinal < 0 || size_t(ordinal) >= c->filas[fila_].size())
        throw FalloEjecucion::fueraDeRango();
    return c->filas[fila_][size_t(ordinal)];
}

const Valor& Recordset::Fields(const QString& nombre) const
{
    const auto* c = actual();
    if (!c)
        throw FalloEjecucion::objetoCerrado();
    for (qsizetype i = 0; i < c->columnas.size(); ++i) {
        if (c->columnas[i].compare(nombre, Qt::CaseInsensitive) == 0) {
            if (fila_ >= c->filas.size())
                throw FalloEjecucion::finDeDatos();
            return c->filas[fila_][size_t(i)];
        }
    }
    throw FalloEjecucion::campoNoEncontrado(nombre);
}

long Recordset::RecordCount() const
{
    const auto* c = actual();
    if (!c)
        throw FalloEjecucion::objetoCerrado();
    return long(c->filas.size());
}

bool Recordset::NextRecordset()
{
    if (!abierto_)
        throw FalloEjecucion::objetoCerrado();
    if (conjunto_ < conjuntos_.size())
        ++conjunto_;
    fila_ = 0;
    return conjunto_ < conjuntos_.size();
}

void Recordset::Open(const QString& sql, Conexion& conexion)
{
    conjuntos_ = conexion.servidor().abrirConsulta(sql);
    conjunto_ = 0;
    fila_ = 0;
    abierto_ = true;
}

void Recordset::Close()
{
    conjuntos_.clear();
    conjunto_ = fila_ = 0;
    abierto_ = false;
}

void Conexion::Open()
{
    servidor_ = crearServidor(ConnectionString);
    servidor_->abrir();
}

void Conexion::Close()
{
    if (servidor_)
        servidor_->cerrar();
    servidor_.reset();
}

Servidor& Conexion::servidor()
{
    if (!Abierta())
        throw FalloEjecucion::objetoCerrado();
    return *servidor_;
}

void Conexion::Execute(const QString& sql, int sentencias) { servidor().ejecutar(sql, sentencias); }

void Comando::parametrosDelProcedimiento()
{
    if (CommandText.compare(textoDeLosParametros_, Qt::CaseInsensitive) != 0) {
        valores_.clear();
        textoDeLosParametros_ = CommandText;
    }
}

Parametro& Comando::Parameters(int n)
{
    parametrosDelProcedimiento();
    if (n < 1)
        throw FalloEjecucion::fueraDeRango();
    if (valores_.size() < size_t(n))
        valores_.resize(size_t(n));
    return valores_[size_t(n - 1)];
}

namespace {

// A text bound to a procedure without the control characters that no field
// of the program holds (a NUL would cut a name on the server); tabs and line
// ends stay.
Parametro sinControles(const Parametro& p)
{
    if (!p || !p->esTexto())
        return p;
    QString t = p->aTexto();
    const auto control = [](QChar c) {
        const char16_t u = c.unicode();
        return (u < 0x20 && u != u'\t' && u != u'\n' && u != u'\r') || u == 0x7f;
    };
    if (std::none_of(t.cbegin(), t.cend(), control))
        return p;
    t.removeIf(control);
    return Valor(t);
}

} // namespace

std::unique_ptr<Recordset> Comando::Execute(int)
{
    if (!ActiveConnection)
        throw FalloEjecucion::objetoCerrado();
    parametrosDelProcedimiento();
    std::vector<Parametro> valores;
    valores.reserve(valores_.size());
    for (const Parametro& p : valores_) {
        valores.push_back(sinControles(p));
        // Both servers' procedures are reached only here: a text that SQL
        // Server would keep as '?' is refused on either one before the call.
        if (valores.back() && valores.back()->esTexto())
            Guardia::guardable(valores.back()->aTexto());
    }
    return std::make_unique<Recordset>(ActiveConnection->servidor().procedimiento(CommandText, valores));
}
