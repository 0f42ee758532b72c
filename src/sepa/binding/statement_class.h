// The script class SEPAStatementParser.
#pragma once

// Registers the class; called once, by the module's start.
void statement_class_register();
