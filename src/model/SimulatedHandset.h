// A model that behaves like a CDMA handset on a serial port: its NV items
// live in an NV memory, the catalogue says where each value of the panel
// stands in them, and the three commands move the values between the memory
// and the panel through the panel's public methods.
#pragma once

#include "model/NvMemory.h"

#include <tessaly/BaseModel.h>

#include <chrono>
#include <optional>

class Tessaly;

namespace tessaly::model {

class Catalogue;
struct Sheet;

class SimulatedHandset : public IBaseModel {
    Q_OBJECT
public:
    static constexpr int32_t Port = 7;

    SimulatedHandset(Tessaly& panel, NvMemory& memory, QObject* parent = nullptr);

    // The time that each NV item takes on the line, so that a person can
    // watch the progress; none at first.
    void setPace(std::chrono::milliseconds perItem) { m_pace = perItem; }

    void NVRead() override;
    void GetModelName(QString& name) override;
    void GetPortNumber(QString& port) override;
    void NVWrite() override;
    void NVRestore() override;

private:
    void transfer();
    void announce(int32_t process, int32_t steps);
    // One sub-process of so many steps; `step` does the work of each.
    template <class Step> void subProcess(int32_t number, const QString& name, int32_t steps, Step&& step);
    void fillPanel(int32_t number);
    void fillSheet(const Sheet& sheet);
    int16_t partOf(const Sheet& sheet);
    int16_t partIn(const Sheet& sheet) const;
    const NvImage& lastRead(const char* command) const;
    NvImage valuesOfPanel() const;
    void writeItems(const NvImage& items, const QString& name);

    Tessaly& m_panel;
    NvMemory& m_memory;
    const Catalogue& m_catalogue;
    std::chrono::milliseconds m_pace{0};
    std::optional<NvImage> m_lastRead;
    int16_t m_ownPage = -1; // the page the handset adds to the panel, once it has
};

} // namespace tessaly::model
