// The statements that a new database is made of, as data/schema.sql has them.
#pragma once

namespace lokari {

extern const char kSchemaSql[];

}  // namespace lokari
