// A list of any length of which only the rows in sight exist.

const kRow = 24;
const kSpare = 6; ///< Rows beyond each edge.

export class Rows {
    /**
     * @param box     the element that scrolls; a child with the class "head" stays on top
     * @param source  count(), item(index), make() a row's element, fill(element, item, index), chosen(item), choose(index),
     *                open(index), optionally seen(first, last)
     */
    constructor(box, source) {
        this.box = box;
        this.source = source;
        this.head = box.querySelector(".head")?.offsetHeight ? kRow : 0;
        this.sheet = document.createElement("div");
        this.sheet.className = "sheet";
        this.sheet.setAttribute("role", "presentation");
        box.append(this.sheet);
        this.pool = [];
        this.height = -1;
        this.pending = false;
        box.addEventListener("scroll", () => this.scrolled(), { passive: true });
        new ResizeObserver(() => this.refresh()).observe(box);
        this.sheet.addEventListener("pointerdown", event => {
            const row = event.target.closest(".row");
            if (row && event.button === 0) {
                source.choose(row.index);
            }
        });
        this.sheet.addEventListener("click", event => {
            const row = event.target.closest(".row");
            if (row) {
                source.open(row.index);
            }
        });
    }

    /** Draws with the next frame; any number of calls before it cost one drawing. */
    refresh() {
        if (!this.pending) {
            this.pending = true;
            requestAnimationFrame(() => {
                this.pending = false;
                this.draw();
            });
        }
    }

    get atEnd() {
        return this.box.scrollTop + this.box.clientHeight >= this.box.scrollHeight - kRow;
    }

    get page() {
        return Math.max(1, Math.floor((this.box.clientHeight - this.head) / kRow) - 1);
    }

    scrolled() {
        this.source.moved?.();
        this.draw();
    }

    toEnd() {
        this.box.scrollTop = this.box.scrollHeight;
    }

    show(index) {
        const top = index * kRow;
        const room = this.box.clientHeight - this.head;
        if (top < this.box.scrollTop) {
            this.box.scrollTop = top;
        } else if (top + kRow > this.box.scrollTop + room) {
            this.box.scrollTop = top + kRow - room;
        }
    }

    draw() {
        const { box, source } = this;
        if (box.clientHeight === 0) {
            return;
        }
        const count = source.count();
        if (this.height !== count) {
            this.height = count;
            this.sheet.style.height = `${count * kRow}px`;
            box.setAttribute("aria-rowcount", count + (this.head ? 1 : 0));
        }
        source.drawing?.();
        const first = Math.max(0, Math.floor(box.scrollTop / kRow) - kSpare);
        const last = Math.min(count, Math.ceil((box.scrollTop + box.clientHeight) / kRow) + kSpare);
        source.seen?.(first, last);
        const needed = Math.ceil(box.clientHeight / kRow) + 2 * kSpare + 1;
        while (this.pool.length < needed) {
            const row = source.make();
            row.classList.add("row");
            row.id = `${box.id}-${this.pool.length}`;
            this.sheet.append(row);
            this.pool.push(row);
        }
        let active = "";
        for (let slot = 0; slot < this.pool.length; ++slot) {
            const row = this.pool[slot];
            // A row keeps its element while it is in sight: scrolling fills only what comes in.
            const index = first + (slot - first % this.pool.length + this.pool.length) % this.pool.length;
            if (index >= last) {
                if (row.index !== -1) {
                    row.index = -1;
                    row.item = undefined;
                    row.hidden = true;
                }
                continue;
            }
            const item = source.item(index);
            if (row.index !== index) {
                row.index = index;
                row.hidden = false;
                row.style.transform = `translateY(${index * kRow}px)`;
                row.setAttribute(this.head ? "aria-rowindex" : "aria-posinset", index + (this.head ? 2 : 1));
            }
            if (row.item !== item) {
                row.item = item;
                source.fill(row, item, index);
            }
            const chosen = item !== undefined && source.chosen(item, index);
            if (row.chosen !== chosen) {
                row.chosen = chosen;
                row.setAttribute("aria-selected", chosen);
            }
            if (chosen) {
                active = row.id;
            }
        }
        if (this.active !== active) {
            this.active = active;
            if (active) {
                box.setAttribute("aria-activedescendant", active);
            } else {
                box.removeAttribute("aria-activedescendant");
            }
        }
    }

    /** Where a key leads from `index` (-1: nothing is chosen); undefined for other keys. */
    target(key, index) {
        const last = this.source.count() - 1;
        const to = {
            ArrowDown: index + 1, j: index + 1,
            ArrowUp: index < 0 ? last : index - 1, k: index < 0 ? last : index - 1,
            PageDown: index + this.page, PageUp: index - this.page,
            Home: 0, End: last,
        }[key];
        return to === undefined || last < 0 ? undefined : Math.min(last, Math.max(0, to));
    }
}
