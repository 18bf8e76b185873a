// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The factory file system: names as handsets of this family lay out their
// trees, bytes drawn from one Mersenne Twister of a fixed seed (its output is
// the same on every platform, unlike the standard library's distributions).
#include "FactoryEfs.h"

#include "link/Efs2.h"

#include <initializer_list>
#include <random>

namespace emu {

using namespace tessaly::link;

namespace {

constexpr uint32_t Seed = 800;
constexpr int32_t ReleaseTime = 1710927000 - int32_t(tessaly::link::EfsTimeStart); // 20 March 2024, 09:30 UTC: the software's release

// Item files by folder under /nv/item_files, and the .conf file that lists
// them.
struct ItemGroup {
    const char* folder;
    const char* conf;
    std::initializer_list<const char*> names;
};

const ItemGroup ItemGroups[] = {
    {"modem/mmode", "mmode",
     {"sms_domain_pref", "sms_mandatory", "sms_only", "ue_usage_setting", "voice_domain_pref",
      "lte_disable_duration", "rat_acq_order", "mode_pref", "band_pref", "roam_pref", "hybr_pref", "prl_pref",
      "srv_domain_pref", "acq_order_pref", "lte_bandpref", "device_mode", "disable_global_mode",
      "emergency_callback_timer", "call_mode", "plmn_name_disp", "csg_auto_mode", "operator_name",
      "custom_ecc_list", "dual_rx_1xsrlte", "lte_do_irat_enable"}},
    {"ims", "ims",
     {"qipcall_config_items", "ims_user_agent", "ims_sip_config", "ims_reg_config", "ims_pres_config",
      "ims_sms_config", "ims_media_config", "ims_common_config", "ims_operator_mode", "ims_feature_enable",
      "ims_qos_config", "ims_codec_config", "ims_rtp_config", "ims_dcm_config", "ims_apcs_config"}},
    {"modem/data/3gpp2", "data_config_info",
     {"ehrpd_to_hrpd_fallback", "ppp_auth_fail_max", "ehrpd_auth", "mip_profile_index", "mip_behavior", "qcmip",
      "dun_ctrl", "go_null_timer_1x", "go_null_timer_do", "ppp_auth_type", "hdr_pkt_data_fail",
      "ppp_vsncp_timeout", "ehrpd_pdn_throttle", "1x_data_session_retry"}},
    {"modem/data/3gpp", "data_3gpp",
     {"lte_attach_profile", "ps_data_off", "apn_rate_control", "umts_nw_init_qos", "multi_pdn_same_apn",
      "lte_attach_pdn_list", "ds_3gpp_rel_version", "auto_connect_rmnet"}},
    {"modem/nas", "nas",
     {"nas_config", "t3402_timer", "temp_fplmn_backoff_time", "csg_support", "imsi_switch", "mm_timer_config",
      "ignore_mt_csfb", "lte_nas_ue_sec_cap"}},
    {"modem/uim/mmgsdi", "uim",
     {"features_status_list", "refresh_vote_ok", "onchip_config", "nv_app_info", "silent_pin_config"}},
    {"modem/uim/gstk", "gstk", {"gstk_config", "terminal_profile", "proactive_feature", "bip_timeout"}},
    {"modem/cdma/1x", "cdma",
     {"so73_enable", "slot_cycle_index", "qpch_enable", "access_overload", "reg_timer", "page_ch_rate",
      "ms_ip_address", "tcb_timeout"}},
    {"modem/hdr/cp", "hdr",
     {"hdrmc_config", "session_config", "ehrpd_enable", "hdr_rev_support", "force_at_config", "silent_redial"}},
    {"modem/sms", "sms", {"sms_ims_fallback", "sms_retry_period", "sms_mo_on_ims", "sms_over_sgs"}},
    {"modem/lte/rrc", "lte_rrc",
     {"rrc_cap", "rrc_release_timer", "meas_config", "csfb_allowed", "band_priority", "idle_drx_cycle"}},
};

constexpr int RfItems = 200;
constexpr uint32_t FirstRfItem = 20000; // RF items are named by number, eight digits

class Builder {
public:
    std::map<QString, EfsNode> nodes;

    uint32_t draw(uint32_t least, uint32_t most) { return least + m_random() % (most - least + 1); }

    QByteArray bytes(qsizetype size)
    {
        QByteArray data(size, '\0');
        for (char& byte : data)
            byte = char(m_random() & 0xFF);
        return data;
    }

    void folder(const QString& path, uint32_t permissions = 0755)
    {
        if (nodes.count(path))
            return;
        if (const qsizetype cut = path.lastIndexOf(u'/'); cut > 0)
            folder(path.left(cut));
        add(path, EfsKindFolder | permissions);
    }

    void file(const QString& path, QByteArray data, uint32_t kind = EfsKindFile, uint32_t permissions = 0644)
    {
        folder(path.left(path.lastIndexOf(u'/')));
        add(path, kind | permissions).data = std::move(data);
    }

    void link(const QString& path, const QString& target) { add(path, EfsKindLink | 0777).target = target; }

private:
    EfsNode& add(const QString& path, uint32_t mode)
    {
        // Made in the month before the release.
        const int32_t made = ReleaseTime - int32_t(draw(0, 30 * 86400));
        return nodes[path] = EfsNode{mode, made, made, made, {}, {}};
    }

    std::mt19937 m_random{Seed};
};

QByteArray PolicyXml(const char* name, int version, const char* body)
{
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                          "<policy name=\"%1\" changelist=\"$Change: %2 $\" policy_ver=\"2024.1.%3\">\n%4</policy>\n")
        .arg(QLatin1String(name))
        .arg(4000 + version * 17)
        .arg(version)
        .arg(QLatin1String(body))
        .toUtf8();
}

} // namespace

std::map<QString, EfsNode> FactoryEfs()
{
    Builder tree;
    tree.folder(QStringLiteral("/"));
    const QString items = QStringLiteral("/nv/item_files/");
    for (const ItemGroup& group : ItemGroups) {
        QByteArray listing;
        for (const char* name : group.names) {
            const QString path = items + QLatin1String(group.folder) + u'/' + QLatin1String(name);
            tree.file(path, tree.bytes(tree.draw(1, 64)), EfsKindItem);
            listing += path.toLatin1() + '\n';
        }
        tree.file(items + QStringLiteral("conf/%1.conf").arg(QLatin1String(group.conf)), listing);
    }
    QByteArray rfListing;
    for (int n = 0; n < RfItems; ++n) {
        const uint32_t number = FirstRfItem + uint32_t(n) * 3;
        const QString path = items + QStringLiteral("rfnv/%1").arg(number, 8, 10, QLatin1Char('0'));
        tree.file(path, tree.bytes(tree.draw(1, 64)), EfsKindItem);
        rfListing += path.toLatin1() + '\n';
    }
    tree.file(items + QStringLiteral("conf/rfnv.conf"), rfListing);
    // The SIM lock the diagnostic port may not read.
    tree.file(items + QStringLiteral("modem/uim/mmgsdi/perso_lock"), tree.bytes(24), EfsKindItem, 0);

    for (int profile = 1; profile <= 6; ++profile)
        tree.file(QStringLiteral("/data/ds_profile/profile_%1").arg(profile), tree.bytes(tree.draw(200, 600)));
    tree.file(QStringLiteral("/data/eri.bin"), tree.bytes(1536));
    tree.file(QStringLiteral("/data/mip/mip_profile_0"), tree.bytes(312));
    tree.file(QStringLiteral("/data/dun_profile"), tree.bytes(96));
    tree.file(QStringLiteral("/policyman/carrier_policy.xml"),
              PolicyXml("carrier_policy", 3,
                        "  <initial>\n    <actions>\n      <rat_capability base=\"none\">\n"
                        "        <include> CDMA HDR LTE </include>\n      </rat_capability>\n"
                        "      <rf_bands base=\"hardware\" />\n    </actions>\n  </initial>\n"));
    tree.file(QStringLiteral("/policyman/device_config.xml"),
              PolicyXml("device_config", 1,
                        "  <initial>\n    <actions>\n      <device_configuration num_sims=\"1\" max_active=\"1\">\n"
                        "        <config primary=\"C H L\" />\n      </device_configuration>\n"
                        "    </actions>\n  </initial>\n"));
    tree.file(QStringLiteral("/policyman/segment_loading.xml"),
              PolicyXml("segment_loading", 2, "  <initial>\n    <actions>\n      <tech_loading>\n"
                                              "        <exclude> TDSCDMA </exclude>\n      </tech_loading>\n"
                                              "    </actions>\n  </initial>\n"));
    tree.file(QStringLiteral("/policyman/restrictions.xml"), PolicyXml("restrictions", 1, "  <initial />\n"));

    // Modem configuration images, the RF calibration and the satellites'
    // almanac: the bulk of the volume.
    tree.file(QStringLiteral("/mcfg/hw/mcfg_hw.mbn"), tree.bytes(192 * 1024));
    tree.file(QStringLiteral("/mcfg/sw/mcfg_sw_cdma_open.mbn"), tree.bytes(384 * 1024));
    tree.file(QStringLiteral("/mcfg/sw/mcfg_sw_row_generic.mbn"), tree.bytes(256 * 1024));
    tree.file(QStringLiteral("/nv/rf_cal/rfcal_blob.bin"), tree.bytes(128 * 1024));
    tree.file(QStringLiteral("/gnss/almanac.bin"), tree.bytes(64 * 1024));

    tree.link(QStringLiteral("/cfg"), QStringLiteral("/nv/item_files/conf"));
    tree.link(QStringLiteral("/policyman/policy.xml"), QStringLiteral("carrier_policy.xml"));
    tree.link(QStringLiteral("/data/ds_profile/default"), QStringLiteral("profile_1"));
    tree.link(items + QStringLiteral("modem/mmode/sms_domain_pref_Subscription01"), QStringLiteral("sms_domain_pref"));

    // Secure storage: a folder the diagnostic port may not enter.
    tree.file(QStringLiteral("/safe/sfs/seed.bin"), tree.bytes(32));
    tree.nodes[QStringLiteral("/safe/sfs")].mode = EfsKindFolder;
    return std::move(tree.nodes);
}

int FactoryEfsCapacity()
{
    qsizetype bytes = 512 * 1024;
    for (const auto& [path, node] : FactoryEfs())
        bytes += node.data.size();
    return int(bytes);
}

} // namespace emu
