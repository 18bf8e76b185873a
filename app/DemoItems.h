// A handset's NV items as halvane shows them until a model is bound: titles
// and values for the NAM, General, Data and Calibration pages.
#pragma once

class Tessaly;

void FillDemoItems(Tessaly& panel);
