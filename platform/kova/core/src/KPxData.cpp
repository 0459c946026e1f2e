#include <kova/KPxData.h>

KPxData::~KPxData() = default;
