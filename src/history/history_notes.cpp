#include "history/history_notes.h"

#include <cctype>

namespace history {

namespace {

HistoryNote alHaythamNote() {
    return {
        "alhaytham",
        "Al Haytham",
        "AL HAYTHAM",
        {"Ο `Aραβας AL HAYTHAM που είναι γνωστός και ως Al Hazen πρότεινε διάφορους νόμους διάθλασης. Συνέκρινε τη "
         "διάθλαση προς την κίνηση ενός σώματος.",
         " Δεν έδωσε ένα μόνο νόμο της διάθλασης αλλά μια σειρά από κανόνες, που φαίνονται στην επόμενη οθόνη.",
         " Η κάθετη συνιστώσα της ταχύτητας μειώνεται, ενώ η παράλληλη μένει σταθερή (ο NEWTON πίστευε ότι αλλάζει η "
         "κάθετη συνιστώσα).",
         " Η συσκευή του χρησιμοποιούσε μια δέσμη φωτός. Απέδειξε ότι η διαθλώμενη ακτίνα, η κάθετη και η "
         "προσπίπτουσα ακτίνα βρίσκονται στο ίδιο επίπεδο.",
         " Χρησιμοποίησε μια 'γραφίδα' για να ελέγξει την πορεία της διαθλώμενης ακτίνας."},
        {" AL HAYTHAM (AL HAZEN) did not give a single REFRACTION law, but  a series of rules, depicted in next form. "
         "He  compared refraction to the movement of a body. ",
         " The  perpendicular component of velocity is reduced, while the PARALLEL remains constant (NEWTON BELIEVED "
         "THAT THE PERPENDICULAR COMPONENT CHANGES)",
         " Al Haytham's apparatus used a LIGHT BEAM. He established that the refracted ray, the  perpendicular  and "
         "the incident ray all lie on the same plane.",
         " He used a 'stylus' to check the path of refracted ray"},
        NoteFigure::None};
}

HistoryNote descartesNote() {
    return {
        "Descarteslaw",
        "Descartes",
        "DESCARTES",
        {"Ο ΚΑΡΤΕΣΙΟΣ (DESCARTES) απέδειξε το νόμο του Snell χρησιμοποιώντας ένα είδος μοντέλου, σύμφωνα με το οποίο "
         "συνέκρινε τη συμπεριφορά του φωτός  με την κίνηηση μιας μπάλας. Όταν το φως προσπίπτει σε ένα πυκνότερο "
         "μέσο, συμπεριφέρεται όπως μια μπάλα που κινείται από ένα μέσο σε άλλο και δέχεται ένα σπρώξιμο.",
         " Όταν το φως προσπίπτει σε ένα αραιότερο μέσο, συμπεριφέρεται σαν μια μπάλα που πέφτει σε ένα ασθενικό "
         "δίχτυ"},
        {"    ******   DESCARTES proved Snell's law. He used a model. In this model he compared light with a ball "
         "falling on a fragile net"},
        NoteFigure::None};
}

HistoryNote fermatNote() {
    return {
        "Fermatlaw",
        "Fermat",
        "FERMAT",
        {"Ο FERMAT (Pierre de Fermat, 1601-1665), Γάλλος νομικός και μαθηματικός, διατύπωσε το 1662 την αρχή του "
         "ελάχιστου χρόνου: το φως πηγαίνει από ένα σημείο σε ένα άλλο ακολουθώντας τη διαδρομή που χρειάζεται τον "
         "ελάχιστο χρόνο.",
         " Στο σχήμα το φως πηγαίνει από το Z, στο μέσο 1, στο H, στο μέσο 2. Ο χρόνος κατά μήκος της ZEH είναι "
         "μικρότερος από το χρόνο κατά μήκος κάθε άλλης διαδρομής, όπως η ZGH, ακόμη κι αν η ZGH είναι πιο κοντή.",
         " Από την αρχή αυτή προκύπτει ο νόμος του Snell: ημ(ZEO) / ημ(HEM) = ταχύτητα στο 1 / ταχύτητα στο 2, όπου "
         "OEM η κάθετη στη διαχωριστική επιφάνεια.",
         " Ο Fermat δέχτηκε ότι το φως κινείται πιο αργά στο πυκνότερο μέσο, αντίθετα με τον Descartes και αργότερα "
         "τον Newton. Η μέτρηση της ταχύτητας του φωτός στο νερό από τον Foucault (1850) τον δικαίωσε."},
        {"FERMAT (Pierre de Fermat, 1601-1665), a French lawyer and mathematician, stated the principle of least time "
         "in 1662: light goes from one point to another along the path that takes the least time.",
         " In the figure light goes from Z, in medium 1, to H, in medium 2. The time along ZEH is smaller than the "
         "time along any other path such as ZGH, even where ZGH is shorter.",
         " Snell's law follows from the principle: sin(ZEO) / sin(HEM) = speed in 1 / speed in 2, where OEM is the "
         "normal to the boundary.",
         " Fermat assumed that light moves more slowly in the denser medium, against Descartes and later Newton. "
         "Foucault's measurement of the speed of light in water (1850) proved him right."},
        NoteFigure::Fermat};
}

HistoryNote fresnelNote() {
    return {
        "fresnellaw",
        "Fresnel",
        "FRESNEL",
        {"Ο FRESNEL ήταν ένας νέος Γάλλος Φυσικός όταν απέδειξε την κυματική φύση του φωτός, ανεξάρτητα από τον Young "
         "ο οποίος την είχε ανακαλύψει λίγο νωρίτερα από αυτόν.",
         "  Με βάση αυτή τη θεωρία μπόρεσε να εξηγήσει το φαινόμενο της μερικής",
         "ανάκλασης που δε μπορούσε να εξηγηθεί ικανοποιητικά με τη σωματιδιακή θεωρία."},
        {"FRESNEL (Augustin-Jean Fresnel, 1788-1827) was a young French physicist when he showed that light is a "
         "wave, independently of Thomas Young, who had reached the same conclusion a little before him.",
         " With the wave theory he could explain partial reflection: why, at the boundary of glass or water, part of "
         "the light is reflected and the rest refracted. The corpuscular theory could not explain it satisfactorily.",
         " His formulas give the share of the light that is reflected and the share that is refracted at every angle "
         "of incidence."},
        NoteFigure::None};
}

HistoryNote heroNote() {
    return {
        "Herolaw",
        "HERO OF ALEXANDRIA",
        "HERO OF ALEXANDRIA",
        {"Ο ΗΡΩΝΑΣ ο Αλεξανδρεύς (1ος αιώνας μ.Χ.) απέδειξε στα «Κατοπτρικά» του το νόμο της ανάκλασης με μια αρχή "
         "ελαχίστου: το φως που ανακλάται σε ένα επίπεδο κάτοπτρο ακολουθεί τη συντομότερη δυνατή διαδρομή.",
         " Στο σχήμα το φως πηγαίνει από το Z στο H αφού ανακλαστεί στο κάτοπτρο. Το H' είναι το συμμετρικό του H ως "
         "προς το κάτοπτρο, άρα EH=EH' και GH=GH'.",
         " Η ZEH' είναι ευθεία γραμμή, άρα για κάθε άλλο σημείο G του κατόπτρου ZG+GH' > ZE+EH', δηλαδή ZG+GH > "
         "ZE+EH.",
         " Η συντομότερη διαδρομή είναι λοιπόν η ZEH, και σε αυτήν η γωνία πρόσπτωσης είναι ίση με τη γωνία "
         "ανάκλασης. Η ιδέα του Ήρωνα είναι ο πρόγονος της αρχής του Fermat."},
        {"HERO OF ALEXANDRIA (1st century AD) proved the law of reflection in his 'Catoptrics' with a principle of "
         "the minimum: light reflected by a plane mirror follows the shortest possible path.",
         " In the figure light goes from Z to H by way of the mirror. H' is the mirror image of H, so EH=EH' and "
         "GH=GH'.",
         " ZEH' is a straight line, so for any other point G of the mirror ZG+GH' > ZE+EH', that is ZG+GH > ZE+EH.",
         " The shortest path is therefore ZEH, and along it the angle of incidence equals the angle of reflection. "
         "Hero's idea is the forerunner of Fermat's principle."},
        NoteFigure::Hero};
}

HistoryNote keplerNote() {
    return {
        "Keplerlaw",
        "Kepler",
        "KEPLER",
        {"Ο KEPLER είναι πολύ γνωστός από τους νόμους του για τις πλανητικές κινήσεις.",
         " Ο Kepler έκανε πολλές συνεισφορές στην Οπτική: Μελέτησε το νόμο της διάθλοασης, εξήγησε τη λειτουργία του "
         "φακού καθώς και το σχηματισμό του αντίστροφου ειδώλου στον αμφιβληστροειεή του ματιού. ",
         " Έδωσε ένα νόμο για τη διάθλαση που γνώριζε ότι είναι προσεγγιστικός και ισχύει γενικά για γωνίες<40° ",
         " Ο νόμος του είναι η βάση για ένα εμπειρικό τύπο: Γωνία διάθλασης= 2/3 γωνίας πρόσπτωσης για διάθλαση από "
         "αραιό σε πυκνό μέσο. "},
        {"KEPLER (Johannes Kepler, 1571-1630) is best known for his laws of planetary motion.",
         " He made many contributions to optics (1604, 1611): he studied the law of refraction, explained how a lens "
         "works and how the inverted image is formed on the retina of the eye.",
         " He gave a law of refraction that he knew to be approximate, holding in general for angles below 40°.",
         " His law is the basis of an empirical rule: refraction angle = 2/3 of the incidence angle, for refraction "
         "from a rarer into a denser medium."},
        NoteFigure::None};
}

HistoryNote newtonNote() {
    return {
        "Newtonlaw",
        "Newton",
        "NEWTON",
        {"Ο NEWTON (Isaac Newton, 1643-1727) εξήγησε τη διάθλαση με τη σωματιδιακή θεωρία του φωτός (Opticks, 1704): "
         "το φως αποτελείται από πολύ μικρά σωματίδια.",
         " Σε ένα πολύ λεπτό στρώμα κοντά στην επιφάνεια ενός πυκνότερου μέσου τα σωματίδια έλκονται από το μέσο με "
         "δύναμη κάθετη στην επιφάνεια. Η κάθετη συνιστώσα της ταχύτητάς τους αυξάνεται, ενώ η παράλληλη μένει "
         "σταθερή, και η πορεία τους καμπυλώνεται μέσα στο στρώμα προς την κάθετη.",
         " Έτσι προκύπτει ο νόμος του Snell, ημ i / ημ r = n, αλλά με ταχύτητα του φωτός μεγαλύτερη στο πυκνότερο "
         "μέσο: ταχύτητα στο 2 / ταχύτητα στο 1 = n.",
         " Η μέτρηση του Foucault (1850) έδειξε ότι το φως κινείται πιο αργά στο νερό από ό,τι στον αέρα, και η "
         "εξήγηση αυτή εγκαταλείφθηκε για την κυματική θεωρία."},
        {"NEWTON (Isaac Newton, 1643-1727) explained refraction with the corpuscular theory of light (Opticks, 1704): "
         "light consists of very small particles.",
         " In a very thin layer near the surface of a denser medium the particles are attracted by the medium with a "
         "force perpendicular to the surface. The perpendicular component of their velocity increases while the "
         "parallel one stays the same, and their path bends within the layer towards the normal.",
         " This gives Snell's law, sin i / sin r = n, but with light faster in the denser medium: speed in 2 / speed "
         "in 1 = n.",
         " Foucault's measurement (1850) showed that light moves more slowly in water than in air, and this "
         "explanation gave way to the wave theory."},
        NoteFigure::Newton};
}

HistoryNote ptolemyNote() {
    return {
        "Ptolemylaw",
        "PTOLEMY'S APPARATUS",
        "ABOUT PTOLEMY",
        {"Ο ΠΤΟΛΕΜΑΙΟΣ (Κλαύδιος Πτολεμαίος, περίπου 100-170 μ.Χ.) έζησε και εργάστηκε στην Αλεξάνδρεια. Στο πέμπτο "
         "βιβλίο της «Οπτικής» του περιγράφει τα πρώτα γνωστά πειράματα για τη διάθλαση.",
         " Η συσκευή του ήταν ένας χάλκινος δίσκος ABGD, βαθμολογημένος σε μοίρες, όρθιος και βυθισμένος ως τη μέση "
         "στο νερό, με ένα μικρό σώμα στο κέντρο E.",
         " Τοποθετούσε ένα σώμα Z στο τόξο DA, στον αέρα, και μετακινούσε ένα δεύτερο σώμα H στο τόξο BG, μέσα στο "
         "νερό, ώσπου τα Z, E και H να φαίνονται στην ίδια ευθεία. Η γωνία ZEA είναι η γωνία πρόσπτωσης και η γωνία "
         "HEG η γωνία διάθλασης.",
         " Μέτρησε έτσι τη διάθλαση από αέρα σε νερό, από αέρα σε γυαλί και από νερό σε γυαλί, ανά 10 μοίρες. Οι "
         "δεύτερες διαφορές των τιμών του είναι όλες μισή μοίρα: οι τιμές του προσαρμόστηκαν σε έναν κανόνα και δεν "
         "είναι όλες άμεσες μετρήσεις."},
        {"PTOLEMY (Claudius Ptolemy, about 100-170 AD) lived and worked in Alexandria. In the fifth book of his "
         "'Optics' he describes the first known experiments on refraction.",
         " His apparatus was a copper disc ABGD, graduated in degrees, standing upright and immersed up to its middle "
         "in water, with a small body at its centre E.",
         " He set a body Z on the arc DA, in air, and moved a second body H along the arc BG, under water, until Z, E "
         "and H looked aligned. Angle ZEA is the angle of incidence and angle HEG the angle of refraction.",
         " In this way he measured refraction from air into water, from air into glass and from water into glass, "
         "every 10 degrees. The second differences of his values are all half a degree: his values were adjusted to a "
         "rule, and not all of them are direct readings."},
        NoteFigure::Ptolemy};
}

HistoryNote snellNote() {
    return {"Snellaw",
            "Snell",
            "SNELL",
            {"Ο SNELL ήταν από το Leiden. Εργάστηκε στην Οπτική. Δεν είναι γνωστό",
             " με ποια μέθοδο βρήκε το νόμο της διάθλασης το 1621. Πέθανε το 1626"},
            {"SNELL (Willebrord Snel van Royen, 1580-1626) was from Leiden. He worked in optics. It is not known",
             " by what method he found the law of refraction in 1621. He died in 1626, without publishing it; the law "
             "became known after his death, and Descartes published the same law in 1637."},
            NoteFigure::None};
}

HistoryNote witeloNote() {
    return {
        "Witellolaw",
        "Witelo",
        "WITELO",
        {"Ο WITELO ήταν ένας Πολωνός επιστήμονας που έζησε τον 13ο αιώνα.",
         " Η κύρια του συνεισφορά ήταν ότι εξήγησε το έργο του Al Haytham. ",
         " Στο έργο του συγκέντρωσε τα αποτελέσματα των Αράβων μελετητών - χωρίς να τους αναφέρει. ",
         " Μερικά από τα αποτελέσματα του είναι 'Θεωρητικά'. Έκανε μερικές λανθασμένες προβλέψεις για διάθλαση από "
         "πυκνό σε αραιό με το να προεκτείνει άκριτα τα αποτελέσματα των μικρών γωνιών για διάθλαση από πυκνό σε "
         "αραιό μέσο."},
        {"WITELO was a Polish scholar who lived in the 13th century.",
         " His main contribution was that he explained the work of Al Haytham.",
         " In his work he gathered the results of the Arab scholars - without naming them.",
         " Some of his results are 'theoretical'. He made some wrong predictions for refraction from a denser into a "
         "rarer medium by extending uncritically the results of small angles: his tables give refraction angles "
         "beyond 90°."},
        NoteFigure::None};
}

}  // namespace

const std::vector<HistoryNote>& historyNotes() {
    static const std::vector<HistoryNote> all{alHaythamNote(), descartesNote(), fermatNote(), fresnelNote(),
                                              heroNote(),      keplerNote(),    newtonNote(), ptolemyNote(),
                                              snellNote(),     witeloNote()};
    return all;
}

namespace {

bool isBlank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

std::string joinPieces(const std::vector<std::string>& pieces) {
    std::string text;
    for (const std::string& piece : pieces) {
        if (!text.empty() && !piece.empty() && !isBlank(text.back()) && !isBlank(piece.front())) text += '\n';
        text += piece;
    }
    return text;
}

}  // namespace

std::string noteText(const HistoryNote& note) { return joinPieces(note.greek) + "\n\n" + joinPieces(note.english); }

std::vector<std::string> figureCaptions(NoteFigure figure) {
    switch (figure) {
    case NoteFigure::Fermat:
        return {
            "FERMAT'S PRINCIPLE Αρχή του Fermat", "TIME OF MOVEMENT ALONG ZEH Ο χρόνος που κινείται το φως κατά ZEH",
            "IS SMALLER THAN TIME ALONG ZGH είναι μικρότερος από το χρόνο κατά ZGH",
            "For ZEO: SIN(ZE0)x SPEED IN  2 =SIN(HEM)xSPEED IN 1  sin(ZEO)Xταχύτητα στο 2=sin(HEM)X ταχύτητα στο 1"};
    case NoteFigure::Hero:
        return {"HERO'S PROOF Απόδειξη του Ήρωνα: SINCE ZG+GH' > ZE+EH' ", " & EH=EH' &  GH=GH\"",
                "The refleceted follows a path Η ανακλώμενη ακολουθεί μια πορεία",
                "with least possible length με το ελάχιστο δυνατό μήκος"};
    case NoteFigure::Newton: return {"PATHS OF Newton's rays"};
    case NoteFigure::Ptolemy: return {"PTOLEMY'S APPARATRUS Η συσκευή του Πτολεμαίου"};
    case NoteFigure::None: break;
    }
    return {};
}

}  // namespace history
