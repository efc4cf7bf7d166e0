#ifndef MATRIX_MATRIX_H
#define MATRIX_MATRIX_H

#include <matrix/taitBryan.h>
#include <matrix/vector.h>

#endif
