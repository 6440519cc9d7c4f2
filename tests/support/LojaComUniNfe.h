#pragma once

#include "support/Loja.h" // LojaComUniNfe
