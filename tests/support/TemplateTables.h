#pragma once

#include "app/ScriptRunner.h"
#include "db/Connection.h"
#include "demo/DemoServer.h"

/// Makes NorvaScheduler with the tables as shipped.
inline void createTemplateTables(Connection& connection) {
    connection.run(sql("CREATE DATABASE NorvaScheduler"));
    const DefaultDatabase scheduler(connection, "NorvaScheduler");
    runScript(connection, DemoServer::scriptsFolder() + "/SchDB.sql");
}
