// placeholder being replaced by the SQL Server backend
#include "sqlserver.h"
#include "fallo.h"
ServidorSqlServer::ServidorSqlServer(DatosSqlServer d) : datos_(std::move(d)) {}
ServidorSqlServer::~ServidorSqlServer() = default;
QString ServidorSqlServer::textoOdbc(const DatosSqlServer&) { return {}; }
void ServidorSqlServer::abrir() { throw FalloEjecucion::conexion(QStringLiteral("no disponible")); }
void ServidorSqlServer::cerrar() {}
bool ServidorSqlServer::abierto() const { return false; }
Resultados ServidorSqlServer::procedimiento(const QString&, const std::vector<Parametro>&) { return {}; }
Resultados ServidorSqlServer::abrirConsulta(const QString&) { return {}; }
void ServidorSqlServer::ejecutar(const QString&) {}
