// What Shop.cs builds on, in an assembly of its own.
namespace Shop.Base {
  public delegate void Notice(object sender, string text);

  public interface IStock<T> {
    int Count { get; }
    bool Take(T item, ref int left);
  }

  public abstract class Store<T> {
    protected int mCount;
    public static readonly string Owner = "none";
    public event Notice Emptied;
    public virtual T Find(string name) { return default(T); }
    public virtual T Find(int number) { return default(T); }
    public abstract void Add(T item, params T[] more);
    public int Size { get { return mCount; } }
    protected internal virtual void Close() { if (Emptied != null) Emptied(this, ""); }
    public void Dispose() { }
    internal void Hidden() { }
  }
}
