// A library of books and its lenders.
package store.library

import java.time.LocalDate
import kotlin.math.max as larger

/* Comments /* nest */ here. */
const val MAX_LOANS = 1_000
private const val MASK = 0xFF and 0b1010
val HALF = .5
val raw = """C:\books\
  "quoted" $HALF"""

enum class Kind(val label: String) { NOVEL("novel"), OTHER("other") }

sealed interface Result<out T>
data class Found<T>(val value: T) : Result<T>
object Missing : Result<Nothing>

typealias Visitor = (Book) -> Unit

@JvmInline
value class Isbn(val text: String) {
    init {
        require(text.isNotEmpty()) { "an empty number" }
    }
}

data class Book(
    val isbn: Isbn,
    val title: String,
    val kind: Kind = Kind.NOVEL,
    var lender: String? = null,
) : Comparable<Book> {
    val isFree: Boolean get() = lender == null
    override fun compareTo(other: Book): Int = title.compareTo(other.title)
}

class Library private constructor(private val books: MutableMap<Isbn, Book>) {
    companion object {
        @JvmStatic
        fun of(vararg books: Book) = Library(books.associateBy { it.isbn }.toMutableMap())
    }

    var loans: Int = 0
        private set

    operator fun get(isbn: Isbn): Result<Book> = books[isbn]?.let { Found(it) } ?: Missing

    @Throws(IllegalStateException::class)
    fun lend(isbn: Isbn, name: String, until: LocalDate = LocalDate.now().plusDays(14L)) {
        when (val found = this[isbn]) {
            is Found -> {
                check(found.value.isFree) { "lent until ${until.dayOfMonth}\n" }
                found.value.lender = name
                loans += 1
            }
            Missing -> throw NoSuchElementException("no book '${isbn.text}'")
        }
    }

    fun forEach(visit: Visitor) {
        for (book in books.values.sorted()) visit(book)
    }

    inline fun <reified T : Comparable<T>> largest(of: (Book) -> T): T? =
        snapshot().map(of).maxOrNull()

    fun snapshot(): List<Book> = books.values.toList()
}

fun String.initials(separator: Char = '\''): String =
    split(' ').filter { it.isNotBlank() }.joinToString(separator.toString()) { it.first().toString() }

suspend fun sync(library: Library) = coroutineScope {
    launch { library.forEach { println(it.title.initials('.')) } }
}

fun bits(value: Int): Int {
    var rest = value
    var n = 0
    do {
        n += rest and 1
        rest = rest shr 1
    } while (rest != 0)
    return n % 7 - 2 * MASK / 3
}

fun main(args: Array<String>) {
    val library = Library.of(
        Book(Isbn("1"), "A Book"),
        Book(Isbn("2"), "Other \"Book\"", Kind.OTHER),
    )
    try {
        library.lend(Isbn("1"), args.firstOrNull() ?: "nobody")
    } catch (e: IllegalStateException) {
        System.err.println(e.message!!)
    } finally {
        println("loans: ${library.loans} of $MAX_LOANS")
    }
    outer@ for (i in 0..10 step 2) {
        for (j in 0 until i) {
            if (i == j || !(i <= 3 && j >= 1)) continue@outer
            println(larger(bits(i), bits(j)) as? Int)
        }
    }
    val number = 1.5e3 + 2f - 3uL.toDouble()
    val nothing: Any? = null
    println(if (nothing === null) true else number !is Double)
}
