// The interpreter of the markup (docs/MARKUP.md): draws on a device, or turns the text
// of a report into plain text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "pages/miseenligne.h"
#include "pages/miseenpage.h"
#include "pages/peripherique.h"

namespace fenlor {

class InterpreteEtat {
 public:
  /// Draws on the device, whose fonts `PreparePage` has made; it outlives the object.
  /// `entete` and `pied` are the markup of "\H" and "\F".
  InterpreteEtat(const MiseEnPage& page, std::string entete, std::string pied, Peripherique& peripherique)
      : m_page(page),
        m_entete(std::move(entete)),
        m_pied(std::move(pied)),
        m_peripherique(peripherique),
        m_lignes(page, peripherique) {}

  /// The state that a page begins with: plain style, no margins, everything to the left.
  void CommencePage() { m_etat = {}; }
  /// Draws on the device all that was interpreted since the page began: only now it is known what stands
  /// beside what (miseenligne.h).
  void FinitPage();

  // Each interprets from the height `depart` of the page on and returns the height it used.

  /// Interprets a text, up to its first NUL. Margins and styles stay as it leaves them.
  i32 InterpreteTexte(i32 depart, std::string_view texte);
  /// The two strings of the page's title; margins and styles are as before afterwards.
  i32 DessineTitre(i32 depart, std::string_view premier, std::string_view second);
  i32 DessineEntete(i32 depart);
  /// In pieces of at most 256 bytes that end at a line feed, which is dropped: a footer
  /// takes no height of its own.
  i32 DessinePied(i32 depart);

 private:
  enum class Course { Place, Centree, ADroite };  ///< at the position, or on the anchor
  /// What title, header and footer give back; the anchor is not part of it.
  struct Trace {
    i32 margeGauche = 0;
    i32 margeDroite = 0;
    Alignement ligne = Alignement::Gauche;
    Course course = Course::Place;
    bool souligne = false;
    bool gras = false;
    bool italique = false;
  };
  /// Of one call of `InterpreteTexte`.
  struct Plume {
    i32 depart;
    i32 x;
    i32 y;
    std::string run;          ///< text waiting to be drawn
    std::string_view source;  ///< what follows it
    /// The text that a further run on this line belongs to; none: it begins one.
    std::optional<std::size_t> texte = std::nullopt;
    i32 yTexte = 0;
  };

  const DessinPapier& Papier() const { return DessinDe(m_page.style); }
  void Code(Plume& plume, char code);
  void Dessine(Plume& plume);  ///< the run; `x` moves on by its width
  i32 DessineRun(Plume& plume);
  PlaceTexte PlaceRun(const Plume& plume, const Etendue& etendue) const;
  bool FinitAColonne() const;  ///< "\R" was meant for what is written
  void FinLigne(Plume& plume);
  /// With no margins and everything to the left, the state as before afterwards. Draws
  /// nothing inside itself: a header cannot call itself.
  template <class Dessin>
  i32 DessineCadre(bool& dedans, Dessin&& dessin);
  i32 Argument(Plume& plume);
  i32 Colonnes(Plume& plume) { return Argument(plume) * m_page.unite; }
  unsigned Style() const;

  MiseEnPage m_page;
  std::string m_entete;
  std::string m_pied;
  Peripherique& m_peripherique;
  MiseEnLigne m_lignes;  ///< what waits to be drawn
  Trace m_etat;
  i32 m_ancre = 0;
  bool m_ancreNeuve = false;  ///< no "\T" since it was set
  bool m_dansEntete = false;
  bool m_dansPied = false;
};

}  // namespace fenlor
