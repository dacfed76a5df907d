// Where each control stands on the record form.
#pragma once

#include <array>

namespace lokari {

enum class FormGroup { Decoder, Vehicle, Model, Remark, User };

/// The kind of widget; what it accepts is told in db/form_fields.h.
enum class FormWidget {
  Line,
  LongLine,  ///< a line of the whole width, its caption above it
  List,
  Lines,
  Shown,  ///< never edited here
};

struct FormPlace {
  const char16_t* control;
  FormGroup group;
  FormWidget widget;
  const char16_t* label = u"";  ///< of a control without a caption of its own
};

// clang-format off
/// In the order of the tab key.
inline constexpr std::array kFormPlaces{
    FormPlace{u"dc_adr",      FormGroup::Decoder, FormWidget::Line},
    FormPlace{u"dc_coll",     FormGroup::Decoder, FormWidget::List},
    FormPlace{u"st_sname",    FormGroup::Decoder, FormWidget::Line},
    FormPlace{u"st_group",    FormGroup::Decoder, FormWidget::Line},
    FormPlace{u"dc_manuf",    FormGroup::Decoder, FormWidget::Shown, u"Decoderhersteller:"},
    FormPlace{u"dc_decoder",  FormGroup::Decoder, FormWidget::Shown, u"Decodertyp:"},
    FormPlace{u"fz_lname",    FormGroup::Vehicle, FormWidget::LongLine},
    FormPlace{u"fz_ftype",    FormGroup::Vehicle, FormWidget::List},
    FormPlace{u"fz_code",     FormGroup::Vehicle, FormWidget::Line},
    FormPlace{u"fz_opcode",   FormGroup::Vehicle, FormWidget::Line},
    FormPlace{u"fz_maxspeed", FormGroup::Vehicle, FormWidget::Line},
    FormPlace{u"fz_line",     FormGroup::Vehicle, FormWidget::List},
    FormPlace{u"fz_era",      FormGroup::Vehicle, FormWidget::List},
    FormPlace{u"md_manuf",    FormGroup::Model,   FormWidget::List},
    FormPlace{u"md_catno",    FormGroup::Model,   FormWidget::Line},
    FormPlace{u"md_scale",    FormGroup::Model,   FormWidget::List},
    FormPlace{u"md_price",    FormGroup::Model,   FormWidget::Line},
    FormPlace{u"md_motor",    FormGroup::Model,   FormWidget::List},
    FormPlace{u"md_info",     FormGroup::Remark,  FormWidget::Lines},
    FormPlace{u"md_user_1",   FormGroup::User,    FormWidget::LongLine},
    FormPlace{u"md_user_2",   FormGroup::User,    FormWidget::LongLine},
    FormPlace{u"md_user_3",   FormGroup::User,    FormWidget::LongLine},
};
// clang-format on

}  // namespace lokari
