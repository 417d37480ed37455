#include "conexion.h"
#include "fallo.h"
#include "guardia.h"

#include <QSet>

#include <algorithm>
#include <cmath>
#include <limits>

Recordset::Recordset(Resultados conjuntos) : conjuntos_(std::move(conjuntos)), abierto_(true) {}

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

void Recordset::Ventana(const QStringList& columnas)
{
    conjuntos_.assign(1, ConjuntoResultados {columnas, {}});
    conjunto_ = fila_ = 0;
    abierto_ = true;
}

QStringList Recordset::columnas() const
{
    const auto* c = actual();
    return c ? c->columnas : QStringList();
}

void Recordset::Pon_Fila(std::vector<Valor>& fila)
{
    auto& filas = conjuntos_.front().filas;
    filas.resize(1);
    filas.front().swap(fila);
    fila_ = 0;
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

namespace {

// The date of a key as the consoles send it, yyyymmdd; 0 for any other text.
int fechaAmd(const QString& texto)
{
    if (texto.size() != 8)
        return 0;
    int r = 0;
    for (QChar c : texto) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return 0;
        r = r * 10 + (c.unicode() - '0');
    }
    return r;
}

// The sequence of a key as a number, as the servers convert it; false when
// the text holds no whole number.
bool secuenciaDe(const QString& texto, int& secuencia)
{
    const QString t = texto.trimmed();
    bool bien = t.isEmpty();
    const double v = bien ? 0 : t.toDouble(&bien);
    if (!bien || v != std::floor(v) || v < std::numeric_limits<int>::min() || v > std::numeric_limits<int>::max())
        return false;
    secuencia = int(v);
    return true;
}

} // namespace

void VersionesCargadas::poner(const Valor& fecha, const Valor& secuencia, const Valor& version)
{
    const int amd = fechaAmd(fecha.aTexto());
    if (amd == 0 || secuencia.esNulo() || version.esNulo())
        return;
    const double s = secuencia.aDouble();
    if (s != std::floor(s) || std::abs(s) > std::numeric_limits<int>::max())
        return;
    versiones_.insert(clave(amd, int(s)), qint64(std::llround(version.aDouble())));
}

std::optional<qint64> VersionesCargadas::version(int fechaAmd, int secuencia) const
{
    const auto it = versiones_.constFind(clave(fechaAmd, secuencia));
    if (it == versiones_.constEnd())
        return std::nullopt;
    return *it;
}

void Conexion::Execute(const QString& sql, int sentencias, const Versiones& vistas)
{
    Servidor& s = servidor();
    VersionesEsperadas esperadas;
    if (vistas) {
        // Each transaction the batch saves or deletes, when this screen loaded
        // it, is to be found at the version the screen saw.
        QSet<quint64> vistas_;
        for (const Guardia::Clave& c : Guardia::cambios(sql, sentencias)) {
            const int amd = fechaAmd(c.fecha);
            int secuencia = 0;
            if (amd == 0 || !secuenciaDe(c.secuencia, secuencia))
                continue;
            const std::optional<qint64> version = vistas->version(amd, secuencia);
            if (version && !vistas_.contains(VersionesCargadas::clave(amd, secuencia))) {
                vistas_.insert(VersionesCargadas::clave(amd, secuencia));
                esperadas.push_back({c.fecha, secuencia, *version});
            }
        }
    }
    s.ejecutar(sql, sentencias, esperadas);
}

class Conexion::LectorDeVersiones {
public:
    // The positions of the key and the version; without all three, nothing is kept.
    explicit LectorDeVersiones(const QStringList& columnas)
    {
        for (qsizetype i = 0; i < columnas.size(); ++i) {
            if (columnas[i].compare(QLatin1String("version_fila"), Qt::CaseInsensitive) == 0)
                version_ = int(i);
            else if (columnas[i].compare(QLatin1String("Fecha"), Qt::CaseInsensitive) == 0)
                fecha_ = int(i);
            else if (columnas[i].compare(QLatin1String("secuenciA"), Qt::CaseInsensitive) == 0)
                secuencia_ = int(i);
        }
        if (version_ >= 0 && fecha_ >= 0 && secuencia_ >= 0)
            versiones_ = std::make_shared<VersionesCargadas>();
    }
    void fila(const std::vector<Valor>& fila)
    {
        if (versiones_)
            versiones_->poner(fila[size_t(fecha_)], fila[size_t(secuencia_)], fila[size_t(version_)]);
    }
    Versiones versiones() const { return versiones_; }
    VersionesCargadas* destino() const { return versiones_.get(); }

private:
    int fecha_ = -1, secuencia_ = -1, version_ = -1;
    std::shared_ptr<VersionesCargadas> versiones_;
};

void Conexion::tomarVersiones(const Resultados& resultados)
{
    versiones_.reset();
    if (resultados.empty())
        return;
    const ConjuntoResultados& c = resultados.front();
    LectorDeVersiones lector(c.columnas);
    if (lector.destino())
        lector.destino()->reservar(qsizetype(c.filas.size()));
    for (const auto& fila : c.filas)
        lector.fila(fila);
    versiones_ = lector.versiones();
}

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

std::vector<Parametro> Comando::valoresDeLaLlamada()
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
    return valores;
}

std::unique_ptr<Recordset> Comando::Execute(int)
{
    const std::vector<Parametro> valores = valoresDeLaLlamada();
    Resultados resultados = ActiveConnection->servidor().procedimiento(CommandText, valores);
    ActiveConnection->tomarVersiones(resultados);
    return std::make_unique<Recordset>(std::move(resultados));
}

void Comando::ExecutePorFilas(Recordset& rs, const std::function<void()>& alEmpezar, const std::function<void()>& porFila)
{
    const std::vector<Parametro> valores = valoresDeLaLlamada();
    // The first set goes through the window; its versions are taken on the way.
    struct Ventana : Receptor {
        Recordset& rs;
        const std::function<void()>& alEmpezar;
        const std::function<void()>& porFila;
        std::optional<Conexion::LectorDeVersiones> versiones;
        int conjuntos = 0;
        Ventana(Recordset& r, const std::function<void()>& a, const std::function<void()>& p) : rs(r), alEmpezar(a), porFila(p) {}
        void conjunto(const QStringList& columnas) override
        {
            if (++conjuntos > 1)
                return;
            versiones.emplace(columnas);
            rs.Ventana(columnas);
            alEmpezar();
        }
        void fila(std::vector<Valor>& valores) override
        {
            if (conjuntos > 1)
                return;
            versiones->fila(valores);
            rs.Pon_Fila(valores);
            porFila();
        }
    } ventana(rs, alEmpezar, porFila);
    ActiveConnection->servidor().procedimientoPorFilas(CommandText, valores, ventana);
    if (ventana.conjuntos == 0)
        rs.Close();
    else
        rs.Ventana(rs.columnas());
    ActiveConnection->versiones_ = ventana.versiones ? ventana.versiones->versiones() : Versiones();
}
